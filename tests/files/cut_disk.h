// The real file system, until the process is "killed" at one operation, without cleanup.
#pragma once

#include "tests/files/stepping_disk.h"

// Not an std::exception, so that nothing catches it, like a kill.
struct Killed {};

class CutDisk final : public SteppingDisk {
 public:
  // The operation at which the process is killed, from 1; 0 for none.
  int killedAt = 0;
  int operations = 0;

 private:
  // A dead process does nothing more, so operations during stack unwinding are rejected.
  void step(const Path& path) override {
    if (isDead) throw Files::DiskError(path, "written", std::make_error_code(std::errc::io_error));
    if (++operations != killedAt) return;
    isDead = true;
    throw Killed();
  }

  bool isDead = false;
};
