// The disk of the system, until the process is killed: at one operation everything ends, and nothing is cleaned up.
#pragma once

#include "host/documents/disk.h"

#include <memory>

// Passes through whatever would stop it, as a kill does.
struct Killed {};

class CutDisk final : public Refhost::Disk {
 public:
  using Path = std::filesystem::path;

  // The operation at which the process is killed, counted from 1; 0 for none.
  int killedAt = 0;
  int operations = 0;

  Refhost::EntryKind kind(const Path& path) override { return disk.kind(path); }
  std::vector<Refhost::Entry> entries(const Path& folder) override { return disk.entries(folder); }
  std::chrono::seconds age(const Path& file) override { return disk.age(file); }
  std::string read(const Path& file, std::size_t limit) override { return disk.read(file, limit); }
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    step(target);
    return std::make_unique<CutFile>(*this, target, disk.create(temporary, target));
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
  class CutFile final : public File {
   public:
    CutFile(CutDisk& cutDisk, Path filePath, std::unique_ptr<File> trueFile)
        : owner(cutDisk),
          path(std::move(filePath)),
          file(std::move(trueFile)) {}
    void write(std::string_view bytes) override {
      file->write(bytes.substr(0, bytes.size() / 2));
      owner.step(path);
      file->write(bytes.substr(bytes.size() / 2));
    }
    void sync() override {
      owner.step(path);
      file->sync();
    }
    void close() override {
      owner.step(path);
      file->close();
    }

   private:
    CutDisk& owner;
    Path path;
    std::unique_ptr<File> file;
  };

  // A dead process does nothing more, so what runs while the stack is unwound is refused.
  void step(const Path& path) {
    if (isDead) throw Refhost::DiskError(path, "written", std::make_error_code(std::errc::io_error));
    if (++operations != killedAt) return;
    isDead = true;
    throw Killed();
  }

  Refhost::Disk& disk = Refhost::realDisk();
  bool isDead = false;
};
