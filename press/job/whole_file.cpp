#include "press/job/whole_file.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace Press {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int code) { throw std::system_error(code, std::generic_category()); }

// Each of these works like its POSIX namesake: negative on failure, with the reason in errno.
#ifdef _WIN32

int createNew(const fs::path& path) {
  return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
}
int processId() { return _getpid(); }
long writeSome(int handle, const void* data, std::size_t size) {
  return _write(handle, data, static_cast<unsigned>(size));
}
int syncFile(int handle) { return _commit(handle); }
int closeFile(int handle) { return _close(handle); }
bool writable(const fs::path& path) { return _waccess(path.c_str(), 2) == 0; }
void syncFolder(const fs::path&) {}                   // replace() below is synchronous
void beginSync(int, std::uint64_t, std::uint64_t) {}  // the system starts writing soon enough

void replace(const fs::path& from, const fs::path& to) {
  // Virus scanners and indexers open new files briefly.
  for (int attempt = 0;; ++attempt) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return;
    const DWORD code = GetLastError();
    const bool passing = code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION;
    if (!passing || attempt == 50) throw std::system_error(static_cast<int>(code), std::system_category());
    Sleep(20);
  }
}

#else

int createNew(const fs::path& path) { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); }
int processId() { return ::getpid(); }
long writeSome(int handle, const void* data, std::size_t size) { return ::write(handle, data, size); }
int syncFile(int handle) { return ::fsync(handle); }
int closeFile(int handle) { return ::close(handle); }
bool writable(const fs::path& path) { return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0; }
void replace(const fs::path& from, const fs::path& to) { fs::rename(from, to); }

// Starts writing back a range, to shorten the final flush. Failures are ignored, since that flushes everything.
void beginSync([[maybe_unused]] int handle, [[maybe_unused]] std::uint64_t from, [[maybe_unused]] std::uint64_t size) {
#ifdef __linux__
  ::sync_file_range(handle, static_cast<off64_t>(from), static_cast<off64_t>(size), SYNC_FILE_RANGE_WRITE);
#endif
}

void syncFolder(const fs::path& folder) {
  const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;  // a folder may be writable but not listable; the file itself is on the disk
  const int result = ::fsync(handle);
  const int code = errno;
  ::close(handle);
  if (result != 0 && code != EINVAL)  // some file systems cannot flush folders, and report it with this error
    fail(code);
}

#endif

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
    const std::string name = ".kiln-" + std::to_string(processId()) + "-" + std::to_string(++count) + ".tmp";
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
  if (handle >= 0) closeFile(handle);
  if (!temporary.empty()) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
  }
}

void WholeFile::write(const void* data, std::size_t size) {
  constexpr std::size_t most = std::size_t{1} << 30;  // the maximum per call on every platform
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const long taken = writeSome(handle, next, size < most ? size : most);
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
  if (syncFile(handle) != 0) fail(errno);
  const int closing = handle;
  handle = -1;
  if (closeFile(closing) != 0) fail(errno);
  replace(temporary, target);
  temporary.clear();
  syncFolder(folderOf(target));
}

}  // namespace Press
