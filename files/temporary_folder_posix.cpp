#include "files/temporary_folder.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace Files {

std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, std::error_code& reason) {
  std::string name = (parent / "kiln-XXXXXX").native();
  if (mkdtemp(name.data()) == nullptr) reason.assign(errno, std::generic_category());
  return name;
}

void removeEmptyFolder(const std::filesystem::path& folder) { static_cast<void>(::rmdir(folder.c_str())); }

}  // namespace Files
