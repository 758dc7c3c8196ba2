#include "files/disk.h"
#include "formats/sentences.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <limits>
#include <optional>
#include <utility>

namespace Files {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, std::string_view action, int code = errno) {
  throw DiskError(path, action, {code, std::generic_category()});
}

// An embedded NUL would truncate the path.
bool hasZero(const fs::path& path) { return path.native().find('\0') != std::string::npos; }

const char* checked(const fs::path& path, std::string_view action) {
  if (hasZero(path)) fail(path, action, EINVAL);
  return path.c_str();
}

// Whether the error of a look-up means that there is no such entry, rather than that it cannot be looked up. No entry
// can have a path with a part that is too long, and a link in a circle leads nowhere.
bool isAbsent(int code) { return code == ENOENT || code == ENOTDIR || code == ENAMETOOLONG || code == ELOOP; }

// Restarts a system call that a signal has interrupted.
template <class Call>
auto uninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

class Handle {
 public:
  explicit Handle(int descriptor) : number(descriptor) {}
  ~Handle() {
    if (number >= 0) ::close(number);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isOpen() const { return number >= 0; }
  int get() const { return number; }

  // An interrupted close has closed the file.
  bool close() { return ::close(std::exchange(number, -1)) == 0 || errno == EINTR; }

 private:
  int number;
};

class PosixFile final : public Disk::File {
 public:
  PosixFile(fs::path filePath, int descriptor) : path(std::move(filePath)), handle(descriptor) {}

  void write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = uninterrupted([&] { return ::write(handle.get(), bytes.data(), bytes.size()); });
      if (written <= 0) fail(path, "written", written < 0 ? errno : ENOSPC);
      bytes.remove_prefix(static_cast<std::size_t>(written));
      size += static_cast<off_t>(written);
    }
    constexpr off_t worthASync = off_t{8} << 20;
    if (size - onTheirWay < worthASync) return;
    // Starts writing back, to shorten the final flush. Failures are ignored, since that flushes everything.
    ::sync_file_range(handle.get(), onTheirWay, size - onTheirWay, SYNC_FILE_RANGE_WRITE);
    onTheirWay = size;
  }
  void sync() override {
    if (uninterrupted([&] { return ::fsync(handle.get()); }) != 0) fail(path, "flushed to the disk");
  }
  void close() override {
    if (!handle.close()) fail(path, "written");
  }

 private:
  fs::path path;
  Handle handle;
  off_t size = 0;
  off_t onTheirWay = 0;  // bytes whose write-back was started
};

class PosixLock final : public Disk::Lock {
 public:
  explicit PosixLock(int descriptor) : handle(descriptor) {}

 private:
  Handle handle;
};

class PosixDisk final : public Disk {
 public:
  EntryKind kind(const fs::path& path) override {
    struct stat status{};
    if (hasZero(path)) return EntryKind::none;
    if (::stat(path.c_str(), &status) == 0) return kindOf(status);
    if (!isAbsent(errno)) fail(path, "examined");
    return EntryKind::none;
  }

  std::vector<Entry> entries(const fs::path& folder) override {
    std::error_code error;
    std::vector<Entry> found;
    checked(folder, "listed");
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
      std::error_code ignored;
      found.push_back({at->path().filename(), listedKind(at->path()), at->is_symlink(ignored)});
    }
    if (error) throw DiskError(folder, "listed", error);
    return found;
  }

  std::chrono::seconds age(const fs::path& file) override {
    struct stat status{};
    if (::stat(checked(file, "read"), &status) != 0) fail(file, "read");
    return std::chrono::seconds(std::time(nullptr) - status.st_mtime);
  }

  std::string read(const fs::path& file, std::size_t limit) override {
    // O_NONBLOCK, since opening a pipe would wait for its writer.
    const Handle handle(opened(checked(file, "read"), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status{};
    if (!handle.isOpen() || ::fstat(handle.get(), &status) != 0) fail(file, "read");
    if (S_ISDIR(status.st_mode)) fail(file, "read", EISDIR);
    if (!S_ISREG(status.st_mode)) fail(file, "read", EINVAL);

    std::string bytes;
    bytes.reserve(std::min(static_cast<std::size_t>(status.st_size), limit));
    char block[1 << 16];
    while (const ssize_t got = uninterrupted([&] { return ::read(handle.get(), block, sizeof block); })) {
      if (got < 0) fail(file, "read");
      bytes.append(block, static_cast<std::size_t>(got));
      if (bytes.size() > limit) fail(file, "read", EFBIG);
    }
    return bytes;
  }

  std::unique_ptr<File> create(const fs::path& temporary, const fs::path& target) override {
    const std::optional<Access> kept = accessTo(target);
    // The old file's permissions are for its own group, so the new file is its owner's alone until it has that.
    const mode_t mode = kept ? kept->mode & S_IRWXU : 0666;
    const int descriptor = opened(checked(temporary, "written"), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0) fail(target, "written");
    auto file = std::make_unique<PosixFile>(target, descriptor);
    // Tells those who sweep that the file is being written. Where there are no locks, they go by the process.
    static_cast<void>(::flock(descriptor, LOCK_EX | LOCK_NB));
    if (kept) takeOver(descriptor, *kept);
    return file;
  }

  void replace(const fs::path& temporary, const fs::path& target) override {
    if (std::rename(checked(temporary, "written"), checked(target, "written")) != 0) fail(target, "written");
  }

  bool remove(const fs::path& file) override {
    if (::unlink(checked(file, "deleted")) == 0) return true;
    if (errno != ENOENT && errno != ENOTDIR) fail(file, "deleted");
    return false;
  }

  void createFolder(const fs::path& folder) override { createFolder(folder, 0777); }
  void createPrivateFolder(const fs::path& folder) override { createFolder(folder, 0700); }

  void syncFolder(const fs::path& folder) override {
    const Handle handle(opened(checked(folder, "flushed to the disk"), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!handle.isOpen() && errno == EACCES) return;  // it may be written to but not listed
    if (!handle.isOpen()) fail(folder, "flushed to the disk");
    // Some file systems cannot flush folders, and report it with this error.
    if (uninterrupted([&] { return ::fsync(handle.get()); }) != 0 && errno != EINVAL)
      fail(folder, "flushed to the disk");
  }

  std::unique_ptr<Lock> tryLock(const fs::path& file, Missing missing) override {
    // Neither follows a link, which could lead out of a home, nor waits for the other end of a pipe.
    const int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int created = missing == Missing::created ? O_CREAT : 0;
    int descriptor = opened(checked(file, "locked"), flags | created, 0666);
    // Another user's, who runs programs on this home as well: locking needs no permission to write.
    if (descriptor < 0 && errno == EACCES) descriptor = opened(file.c_str(), (flags & ~O_ACCMODE) | O_RDONLY);
    if (descriptor < 0) fail(file, "locked");
    auto lock = std::make_unique<PosixLock>(descriptor);
    struct stat status{};
    if (::fstat(descriptor, &status) != 0) fail(file, "locked");
    if (!S_ISREG(status.st_mode)) fail(file, "locked", EINVAL);
    if (uninterrupted([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); }) == 0) return lock;
    if (errno != EWOULDBLOCK) fail(file, "locked");
    return nullptr;
  }

 private:
  static int opened(const char* path, int flags, mode_t mode = 0) {
    return uninterrupted([=] { return ::open(path, flags, mode); });
  }

  // None for an entry that was deleted meanwhile.
  EntryKind listedKind(const fs::path& entry) {
    try {
      return kind(entry);
    } catch (const DiskError&) {
      return EntryKind::unknown;
    }
  }

  static EntryKind kindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return EntryKind::file;
    return S_ISDIR(status.st_mode) ? EntryKind::folder : EntryKind::other;
  }

  void createFolder(const fs::path& folder, mode_t mode) {
    if (::mkdir(checked(folder, "created"), mode) == 0) return;
    const int code = errno;
    if (kind(folder) != EntryKind::folder) fail(folder, "created", code);
  }

  struct Access {
    gid_t group;
    mode_t mode;
  };

  // Gives a new file the access to the old one, without the group's where it cannot have that group. A failure is
  // harmless: the new file is at most as permissive as the old one.
  static void takeOver(int descriptor, const Access& old) {
    struct stat status{};
    const bool hasGroup = (::fstat(descriptor, &status) == 0 && status.st_gid == old.group) ||
                          ::fchown(descriptor, static_cast<uid_t>(-1), old.group) == 0;
    static_cast<void>(::fchmod(descriptor, hasGroup ? old.mode : old.mode & ~mode_t{S_IRWXG}));
  }

  // The access to the file to be replaced; nothing for a new file.
  static std::optional<Access> accessTo(const fs::path& target) {
    struct stat status{};
    if (::lstat(checked(target, "written"), &status) != 0) {
      if (errno != ENOENT) fail(target, "written");
      return {};
    }
    if (S_ISLNK(status.st_mode)) return {};
    if (S_ISDIR(status.st_mode)) fail(target, "written", EISDIR);
    if (!S_ISREG(status.st_mode))
      throw DiskError(Formats::sentence("{1} cannot be written: it is no ordinary file.", shownPath(target)));
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) fail(target, "written");
    return Access{status.st_gid, status.st_mode & 0777};
  }
};

}  // namespace

Disk& realDisk() {
  static PosixDisk disk;
  return disk;
}

long processNumber() { return ::getpid(); }

bool processRuns(long number) {
  // 0 and negative values are process groups.
  if (number <= 0 || number > std::numeric_limits<pid_t>::max()) return false;
  return ::kill(static_cast<pid_t>(number), 0) == 0 || errno == EPERM;
}

}  // namespace Files
