#include "files/temporary_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace Files {
namespace {

// A folder, locked as long as it is open here. Not a link to one.
class OpenFolder final : public Disk::Lock {
 public:
  explicit OpenFolder(const std::filesystem::path& folder)
      : handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {}
  ~OpenFolder() override {
    if (handle >= 0) ::close(handle);
  }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;

  bool lock() const { return handle >= 0 && ::flock(handle, LOCK_EX | LOCK_NB) == 0; }
  bool isOwn() const {
    struct stat status{};
    return handle >= 0 && ::fstat(handle, &status) == 0 && status.st_uid == ::geteuid();
  }

 private:
  const int handle;
};

}  // namespace

std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, const std::string& name,
                                       std::error_code& reason) {
  std::string made = (parent / (name + "XXXXXX")).native();
  if (mkdtemp(made.data()) == nullptr) reason.assign(errno, std::generic_category());
  return made;
}

std::unique_ptr<Disk::Lock> holdFolder(const std::filesystem::path& folder) {
  auto opened = std::make_unique<OpenFolder>(folder);
  return opened->lock() ? std::move(opened) : nullptr;
}

bool isOwnAndFree(const std::filesystem::path& folder) {
  const OpenFolder opened(folder);
  return opened.isOwn() && opened.lock();
}

void removeEmptyFolder(const std::filesystem::path& folder) { static_cast<void>(::rmdir(folder.c_str())); }

}  // namespace Files
