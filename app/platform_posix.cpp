#include "app/platform.h"

#include <unistd.h>

namespace App {

std::vector<std::string> arguments(int count, char** words) {
  return count < 1 ? std::vector<std::string>() : std::vector<std::string>(words + 1, words + count);
}

void prepareStreams() {}  // as they are from the start

bool isErrorSeen() { return isatty(STDERR_FILENO) == 1; }

std::filesystem::path executableFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

}  // namespace App
