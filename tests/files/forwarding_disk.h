// A disk that forwards to another one, by default the real file system. Tests override single operations.
#pragma once

#include "files/disk.h"

#include <memory>
#include <string>
#include <vector>

class ForwardingDisk : public Files::Disk {
 public:
  using Path = std::filesystem::path;

  explicit ForwardingDisk(Files::Disk& trueDisk = Files::realDisk()) : disk(trueDisk) {}

  Files::EntryKind kind(const Path& path) override { return disk.kind(path); }
  std::vector<Files::Entry> entries(const Path& folder) override { return disk.entries(folder); }
  std::chrono::seconds age(const Path& file) override { return disk.age(file); }
  std::string read(const Path& file, std::size_t limit) override { return disk.read(file, limit); }
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    return disk.create(temporary, target);
  }
  void replace(const Path& temporary, const Path& target) override { disk.replace(temporary, target); }
  bool remove(const Path& file) override { return disk.remove(file); }
  void createFolder(const Path& folder) override { disk.createFolder(folder); }
  void createPrivateFolder(const Path& folder) override { disk.createPrivateFolder(folder); }
  void syncFolder(const Path& folder) override { disk.syncFolder(folder); }
  std::unique_ptr<Lock> tryLock(const Path& file, Missing missing) override { return disk.tryLock(file, missing); }

 protected:
  Files::Disk& disk;
};
