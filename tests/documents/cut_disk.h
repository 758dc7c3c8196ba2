// The disk of the system, until the process is killed: at one operation everything ends, and nothing is cleaned up.
#pragma once

#include "tests/documents/stepping_disk.h"

// Passes through whatever would stop it, as a kill does.
struct Killed {};

class CutDisk final : public SteppingDisk {
 public:
  // The operation at which the process is killed, counted from 1; 0 for none.
  int killedAt = 0;
  int operations = 0;

 private:
  // A dead process does nothing more, so what runs while the stack is unwound is refused.
  void step(const Path& path) override {
    if (isDead) throw Refhost::DiskError(path, "written", std::make_error_code(std::errc::io_error));
    if (++operations != killedAt) return;
    isDead = true;
    throw Killed();
  }

  bool isDead = false;
};
