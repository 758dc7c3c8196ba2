// A disk on which one operation fails, or every one from some operation on, as on a full or defective medium.
#pragma once

#include "tests/files/stepping_disk.h"

#include <functional>

class FailingDisk : public SteppingDisk {
 public:
  explicit FailingDisk(Files::Disk& trueDisk) : SteppingDisk(trueDisk) {}

  // The index of the next operation to fail, from 1; 0 for none. Every operation of a disk counts: those that look at
  // files and read them, too.
  int failing = 0;

  // Whether all later operations fail as well.
  bool isLasting = false;
  std::errc reason = std::errc::no_space_on_device;

  // The failure to simulate.
  std::function<void(const Path&)> fail = [this](const Path& path) {
    throw Files::DiskError(path, "written", std::make_error_code(reason));
  };
  int operations = 0;

  Files::EntryKind kind(const Path& path) override {
    step(path);
    return disk.kind(path);
  }
  std::vector<Files::Entry> entries(const Path& folder) override {
    step(folder);
    return disk.entries(folder);
  }
  std::chrono::seconds age(const Path& file) override {
    step(file);
    return disk.age(file);
  }
  std::string read(const Path& file, std::size_t limit) override {
    step(file);
    return disk.read(file, limit);
  }

 private:
  void step(const Path& path) override {
    ++operations;
    if (operations == failing || (isLasting && failing > 0 && operations > failing)) fail(path);
  }
};
