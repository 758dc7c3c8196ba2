#include "press/job/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

namespace Press {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int code) { throw std::system_error(code, std::generic_category()); }

int createNew(const fs::path& path) { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); }

bool writable(const fs::path& path) { return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0; }

// Starts writing back a range, to shorten the final flush. Failures are ignored, since that flushes everything.
void beginSync(int handle, std::uint64_t from, std::uint64_t size) {
  ::sync_file_range(handle, static_cast<off64_t>(from), static_cast<off64_t>(size), SYNC_FILE_RANGE_WRITE);
}

void syncFolder(const fs::path& folder) {
  const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;  // a folder may be writable but not listable; the file itself is on the disk
  const int result = ::fsync(handle);
  const int code = errno;
  ::close(handle);
  // Some file systems cannot flush folders, and report it with this error.
  if (result != 0 && code != EINVAL) fail(code);
}

fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

}  // namespace

WholeFile::WholeFile(const fs::path& path) : target(fs::is_symlink(path) ? fs::weakly_canonical(path) : path) {
  const fs::file_status status = fs::status(target);
  if (fs::exists(status)) {
    if (fs::is_directory(status)) fail(EISDIR);
    if (!fs::is_regular_file(status)) fail(EINVAL);
    if (!writable(target)) fail(EACCES);
  }
  static std::atomic<unsigned> count = 0;
  do {
    const std::string name = ".kiln-" + std::to_string(::getpid()) + "-" + std::to_string(++count) + ".tmp";
    temporary = folderOf(target) / name;
    handle = createNew(temporary);
  } while (handle < 0 && errno == EEXIST);
  if (handle < 0) fail(errno);
  if (fs::exists(status)) {
    std::error_code ignored;  // a file system without permissions has none to keep
    fs::permissions(temporary, status.permissions(), ignored);
  }
}

WholeFile::~WholeFile() {
  if (handle >= 0) ::close(handle);
  if (!temporary.empty()) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
  }
}

void WholeFile::write(const void* data, std::size_t size) {
  constexpr std::size_t most = std::size_t{1} << 30;  // less than the maximum per call
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t taken = ::write(handle, next, size < most ? size : most);
    if (taken < 0 && errno == EINTR) continue;
    if (taken <= 0) fail(taken < 0 ? errno : ENOSPC);
    next += taken;
    size -= static_cast<std::size_t>(taken);
    written += static_cast<std::uint64_t>(taken);
  }
  constexpr std::uint64_t worthASync = std::uint64_t{8} << 20;
  if (written - onTheirWay < worthASync) return;
  beginSync(handle, onTheirWay, written - onTheirWay);
  onTheirWay = written;
}

void WholeFile::commit() {
  if (::fsync(handle) != 0) fail(errno);
  if (::close(std::exchange(handle, -1)) != 0) fail(errno);
  fs::rename(temporary, target);
  temporary.clear();
  syncFolder(folderOf(target));
}

}  // namespace Press
