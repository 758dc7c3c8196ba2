#include "host/home.h"

#include "files/disk.h"
#include "files/whole_file.h"

namespace Refhost {

std::filesystem::path homePath(const std::filesystem::path& wanted) {
  const std::filesystem::path path = std::filesystem::absolute(wanted).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

Home::Home(const std::filesystem::path& wanted) {
  path = homePath(wanted.empty() ? temporary.emplace().path() : wanted);
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  // Writers report what fails here.
  const auto attempt = [this](const auto& work) {
    try {
      work();
    } catch (const Files::DiskError& error) {
      if (problem.empty()) problem = error.what();
    }
  };
  attempt([this] { Files::createPrivateFolder(Files::realDisk(), path); });
  if (!problem.empty()) return;
  for (const char* name : {"user", "profile"}) attempt([&] { Files::createFolders(Files::realDisk(), path / name); });
}

}  // namespace Refhost
