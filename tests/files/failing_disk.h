// A disk on which one operation fails, as on a full or defective medium.
#pragma once

#include "tests/files/stepping_disk.h"

#include <functional>

class FailingDisk : public SteppingDisk {
 public:
  explicit FailingDisk(Files::Disk& trueDisk) : SteppingDisk(trueDisk) {}

  // The index of the next operation to fail, from 1; later ones succeed. 0 for none.
  int failing = 0;
  std::errc reason = std::errc::no_space_on_device;

  // The failure to simulate.
  std::function<void(const Path&)> fail = [this](const Path& path) {
    throw Files::DiskError(path, "written", std::make_error_code(reason));
  };
  int operations = 0;

  std::string read(const Path& file, std::size_t limit) override {
    step(file);
    return disk.read(file, limit);
  }

 private:
  void step(const Path& path) override {
    if (++operations == failing) fail(path);
  }
};
