// Lets each system call of some work fail with each error that it can report.
#pragma once

#include "tests/files/faulty_calls.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

// The errors that each call can plausibly report.
inline const std::map<std::string, std::vector<int>> errorsOfCalls = {
    {"open", {EIO, EACCES, EMFILE, ENFILE, ENOSPC, EROFS, EDQUOT, ENOMEM, EINTR}},
    {"stat", {EIO, EACCES, ENOMEM, EOVERFLOW, EINTR}},
    {"lstat", {EIO, EACCES, ENOMEM}},
    {"fstat", {EIO, ENOMEM}},
    {"read", {EIO, EINTR, ENOMEM}},
    {"write", {EIO, ENOSPC, EDQUOT, EFBIG, EINTR}},
    {"fsync", {EIO, ENOSPC, EDQUOT, EROFS, EINTR}},
    {"close", {EIO, ENOSPC, EDQUOT, EINTR}},
    {"rename", {EIO, ENOSPC, EACCES, EROFS, EDQUOT}},
    {"unlink", {EIO, EACCES, EROFS}},
    {"mkdir", {EIO, ENOSPC, EACCES, EROFS, EDQUOT}},
    {"opendir", {EIO, EACCES, EMFILE, ENOMEM}},
    {"readdir", {EIO}},
    {"fchmod", {EIO, EACCES, EROFS}},
    {"faccessat", {EIO, EACCES, EROFS}},
};

// One call that fails.
struct CallFault {
  std::string call;
  int at;
  int error;

  friend std::ostream& operator<<(std::ostream& out, const CallFault& fault) {
    return out << fault.call << " number " << fault.at << " with " << strerrorname_np(fault.error);
  }
};

// Calls `attempt` with each fault of a kind of call, until there is no call left to fail. `attempt` returns whether the
// fault took place. Returns how many did.
template <class Attempt>
int forEveryFaultOf(const std::string& call, const std::vector<int>& errors, const Attempt& attempt) {
  constexpr int most = 1000;
  int faults = 0;
  for (const int error : errors)
    for (int at = 1; at < most && attempt(CallFault{call, at, error}); ++at) ++faults;
  return faults;
}

inline FaultyCalls::Plan planOf(const CallFault& fault, const std::filesystem::path& folder) {
  return {folder.string(), fault.call, fault.at, fault.error, 0};
}
