#include "tests/support/growth.h"

#include <windows.h>

#include <cstdint>

namespace {

double secondsOf(const FILETIME& time) {
  constexpr double ticksInSecond = 1e7;
  return static_cast<double>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime) / ticksInSecond;
}

}  // namespace

// std::clock tells the time of day there.
double Testing::processorTime() {
  FILETIME created;
  FILETIME ended;
  FILETIME kernel;
  FILETIME user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return secondsOf(kernel) + secondsOf(user);
}
