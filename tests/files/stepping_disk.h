// A disk that announces each modifying step before it is executed, so that tests can interrupt it there.
#pragma once

#include "tests/files/forwarding_disk.h"

#include <string_view>
#include <utility>

class SteppingDisk : public ForwardingDisk {
 public:
  using ForwardingDisk::ForwardingDisk;

  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    step(target);
    return std::make_unique<SteppingFile>(*this, target, disk.create(temporary, target));
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

 protected:
  // Throws to interrupt the operation; writes are then half done.
  virtual void step(const Path& path) = 0;

 private:
  class SteppingFile final : public File {
   public:
    SteppingFile(SteppingDisk& steppingDisk, Path filePath, std::unique_ptr<File> trueFile)
        : owner(steppingDisk),
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
    SteppingDisk& owner;
    Path path;
    std::unique_ptr<File> file;
  };
};
