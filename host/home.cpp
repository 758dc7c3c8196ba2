#include "host/home.h"

#include "files/disk.h"

namespace Refhost {

std::filesystem::path homePath(const std::filesystem::path& wanted) {
  const std::filesystem::path path = std::filesystem::absolute(wanted).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

Home::Home(const std::filesystem::path& wanted) {
  path = homePath(wanted.empty() ? temporary.emplace().path() : wanted);
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  try {
    Files::realDisk().createPrivateFolder(path);
  } catch (const Files::DiskError&) {
    // Writers report it.
  }
  for (const char* name : {"user", "profile"}) std::filesystem::create_directories(path / name, ignored);
}

}  // namespace Refhost
