#include "app/system/platform.h"

#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace App {

std::vector<std::string> arguments(int count, char** words) {
  return count < 1 ? std::vector<std::string>() : std::vector<std::string>(words + 1, words + count);
}

void prepareStreams() {}  // nothing to do

void prepareScreen(int) {}  // the host itself reports the resolution

void prepareMemory() {
#ifdef __GLIBC__
  mallopt(M_MMAP_THRESHOLD, 32 << 20);  // the maximum allowed
  mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
}

bool isErrorSeen() { return isatty(STDERR_FILENO) == 1; }

}  // namespace App
