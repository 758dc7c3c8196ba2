#pragma once

#include <sys/resource.h>

#include <csignal>

// Limits the size of files that this process can write.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{bytes, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() { ::setrlimit(RLIMIT_FSIZE, &before); }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit before;
};
