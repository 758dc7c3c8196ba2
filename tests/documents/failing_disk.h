// A disk of which one operation fails, as on a medium that is full or going bad.
#pragma once

#include "host/documents/disk.h"

#include <functional>
#include <memory>

class FailingDisk : public Refhost::Disk {
 public:
  using Path = std::filesystem::path;

  explicit FailingDisk(Refhost::Disk& trueDisk) : disk(trueDisk) {}

  // The operation from now on that fails, counted from 1; those after it work. 0 for none.
  int failing = 0;
  std::errc reason = std::errc::no_space_on_device;

  // How it fails.
  std::function<void(const Path&)> fail = [this](const Path& path) {
    throw Refhost::DiskError(path, "written", std::make_error_code(reason));
  };
  int operations = 0;

  Refhost::EntryKind kind(const Path& path) override { return disk.kind(path); }
  std::vector<Refhost::Entry> entries(const Path& folder) override { return disk.entries(folder); }
  std::chrono::seconds age(const Path& file) override { return disk.age(file); }
  std::string read(const Path& file, std::size_t limit) override {
    step(file);
    return disk.read(file, limit);
  }
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    step(target);
    return std::make_unique<FailingFile>(*this, target, disk.create(temporary, target));
  }
  void replace(const Path& temporary, const Path& target) override {
    step(target);
    disk.replace(temporary, target);
  }
  bool remove(const Path& file) override {
    step(file);
    return disk.remove(file);
  }
  void createFolder(const Path& folder) override {
    step(folder);
    disk.createFolder(folder);
  }
  void syncFolder(const Path& folder) override {
    step(folder);
    disk.syncFolder(folder);
  }

 private:
  class FailingFile final : public File {
   public:
    FailingFile(FailingDisk& failingDisk, Path filePath, std::unique_ptr<File> trueFile)
        : disk(failingDisk),
          path(std::move(filePath)),
          file(std::move(trueFile)) {}
    void write(std::string_view bytes) override {
      file->write(bytes.substr(0, bytes.size() / 2));
      disk.step(path);
      file->write(bytes.substr(bytes.size() / 2));
    }
    void sync() override {
      disk.step(path);
      file->sync();
    }
    void close() override {
      disk.step(path);
      file->close();
    }

   private:
    FailingDisk& disk;
    Path path;
    std::unique_ptr<File> file;
  };

  void step(const Path& path) {
    if (++operations == failing) fail(path);
  }

  Refhost::Disk& disk;
};
