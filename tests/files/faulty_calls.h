// Makes one system call of this process fail, and records the calls. The library stands before the C library: linked to
// a test, or loaded into another program by LD_PRELOAD.
#pragma once

#include <string>
#include <vector>

namespace FaultyCalls {

// Calls are named like their functions without what distinguishes variants: "open" is also openat and fopen, "stat"
// also fstatat, "opendir" also fdopendir, "rename" also renameat, and so on.
struct Plan {
  // Only calls on this folder, and on what is below it, count and are recorded; an absolute path.
  std::string folder;

  // The call that fails, and which of these calls, from 1; negative for that one and all later ones. 0 for none.
  std::string call;
  int at = 0;

  // The error that it reports without doing anything, but a close that fails has closed the file. 0 for a read or write
  // of at most `amount` bytes, which reports how many.
  int error = 0;
  long amount = 0;
};

// What has happened since a plan was made.
struct Report {
  std::vector<std::string> calls;  // "CALL PATH"; for "rename" also the new path

  // The path of the first call that failed; empty when there was none.
  std::string failed;

  // Files and folders below the plan's folder that are still open.
  int open = 0;
};

void make(const Plan& plan);

// Ends the plan.
Report end();

// The environment for another program to run with the plan. It appends a line for each call to the file `log`, and one
// that begins with "!" when a call fails.
std::vector<std::string> environment(const std::string& library, const Plan& plan, const std::string& log);

}  // namespace FaultyCalls
