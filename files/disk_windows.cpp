#include "files/disk.h"
#include "files/windows_names.h"
#include "formats/sentences.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace Files {
namespace {

namespace fs = std::filesystem;

constexpr std::wstring_view verbatim = L"\\\\?\\";  // the prefix of long paths that are used unmodified

[[noreturn]] void fail(const fs::path& path, std::string_view action, DWORD code = GetLastError()) {
  if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION)
    throw DiskError(
        cannotBe(action, path, Formats::sentence("another program has it open; close it there and try again.")));
  throw DiskError(path, action, {static_cast<int>(code), std::system_category()});
}

std::wstring absolute(const fs::path& path, std::string_view action) {
  const std::wstring& text = path.native();
  if (text.empty() || text.find(L'\0') != text.npos) fail(path, action, ERROR_INVALID_NAME);
  std::wstring full(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetFullPathNameW(text.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0) fail(path, action);
    const bool fitted = length < full.size();
    full.resize(length);
    if (fitted) return full;
  }
}

// The path for system calls, at any length. Long-path syntax disables normalisation, so names that the system would
// change or treat as devices are rejected first.
std::wstring checked(const fs::path& path, std::string_view action) {
  for (const fs::path& part : path.relative_path()) {
    if (part == "." || part == ".." || part.empty()) continue;
    const std::string problem = windowsNameProblem(pathText(part));
    if (!problem.empty()) throw DiskError(cannotBe(action, path, problem));
  }
  if (path.native().starts_with(verbatim)) return path.native();
  const std::wstring full = absolute(path, action);
  if (full.starts_with(L"\\\\.\\")) fail(path, action, ERROR_INVALID_NAME);
  if (full.starts_with(L"\\\\")) return std::wstring(verbatim) + L"UNC" + full.substr(1);
  return std::wstring(verbatim) + full;
}

// Retries for a second, in case another program such as a virus scanner has the file open.
template <class Call>
bool patiently(const Call& call) {
  constexpr int attempts = 50;
  for (int attempt = 1;; ++attempt) {
    if (call()) return true;
    const DWORD code = GetLastError();
    const bool passing = code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION;
    if (!passing || attempt == attempts) {
      SetLastError(code);
      return false;
    }
    pauseBetweenAttempts();
  }
}

// Whether the error of a look-up means that there is no such entry, rather than that it cannot be looked up.
bool isAbsent(DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:  // a part of the path is a file
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_CANT_RESOLVE_FILENAME:  // links in a circle
      return true;
    default: return false;
  }
}

// The attributes of an entry; nothing when there certainly is none. Waits for a file that is being deleted, which
// denies access until its last user closes it.
std::optional<DWORD> attributesOf(const fs::path& path, const std::wstring& full, std::string_view action) {
  DWORD attributes = INVALID_FILE_ATTRIBUTES;
  const bool isKnown = patiently([&] {
    attributes = GetFileAttributesW(full.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES;
  });
  if (isKnown) return attributes;
  const DWORD code = GetLastError();
  if (!isAbsent(code)) fail(path, action, code);
  return {};
}

class Handle {
 public:
  explicit Handle(HANDLE opened) : handle(opened) {}
  ~Handle() {
    if (isOpen()) CloseHandle(handle);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isOpen() const { return handle != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle; }
  bool close() { return CloseHandle(std::exchange(handle, INVALID_HANDLE_VALUE)) != 0; }

 private:
  HANDLE handle;
};

// Why a file could not be replaced or deleted: open files fail with an access error.
DWORD hindrance(const std::wstring& path, DWORD code) {
  if (code != ERROR_ACCESS_DENIED) return code;
  const Handle probe(CreateFileW(path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, 0, nullptr));
  return !probe.isOpen() && GetLastError() == ERROR_SHARING_VIOLATION ? ERROR_SHARING_VIOLATION : code;
}

class WindowsFile final : public Disk::File {
 public:
  WindowsFile(fs::path filePath, HANDLE opened) : path(std::move(filePath)), handle(opened) {}

  void write(std::string_view bytes) override {
    constexpr std::size_t most = std::size_t{1} << 30;  // the maximum per call
    while (!bytes.empty()) {
      const auto wanted = static_cast<DWORD>(std::min(bytes.size(), most));
      DWORD written = 0;
      if (WriteFile(handle.get(), bytes.data(), wanted, &written, nullptr) == 0) fail(path, "written");
      if (written == 0) fail(path, "written", ERROR_DISK_FULL);
      bytes.remove_prefix(written);
    }
  }
  void sync() override {
    if (FlushFileBuffers(handle.get()) == 0) fail(path, "flushed to the disk");
  }
  void close() override {
    if (!handle.close()) fail(path, "written");
  }

 private:
  fs::path path;
  Handle handle;
};

class WindowsLock final : public Disk::Lock {
 public:
  explicit WindowsLock(HANDLE opened) : handle(opened) {}

 private:
  Handle handle;
};

class WindowsDisk final : public Disk {
 public:
  EntryKind kind(const fs::path& path) override {
    std::wstring full;
    try {
      full = checked(path, "examined");
    } catch (const DiskError& problem) {
      if (problem.code() && !isAbsent(static_cast<DWORD>(problem.code().value()))) throw;
      return EntryKind::none;  // no file can have such a name
    }
    const auto attributes = attributesOf(path, full, "examined");
    return attributes ? kindOf(*attributes) : EntryKind::none;
  }

  std::vector<Entry> entries(const fs::path& folder) override {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((checked(folder, "listed") + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) fail(folder, "listed");
    std::vector<Entry> all;
    do {
      const std::wstring_view name = found.cFileName;
      if (name != L"." && name != L"..") all.push_back({name, kindOf(found.dwFileAttributes), isLink(found)});
    } while (FindNextFileW(search, &found) != 0);
    const DWORD code = GetLastError();
    FindClose(search);
    if (code != ERROR_NO_MORE_FILES) fail(folder, "listed", code);
    return all;
  }

  std::chrono::seconds age(const fs::path& file) override {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(checked(file, "read").c_str(), GetFileExInfoStandard, &data) == 0) fail(file, "read");
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    constexpr long long perSecond = 10'000'000;  // units of 100 ns
    return std::chrono::seconds((ticks(now) - ticks(data.ftLastWriteTime)) / perSecond);
  }

  std::string read(const fs::path& file, std::size_t limit) override {
    const std::wstring path = checked(file, "read");
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) fail(file, "read");
    if (kindOf(attributes) == EntryKind::folder)
      throw DiskError(file, "read", std::make_error_code(std::errc::is_a_directory));
    HANDLE opened = INVALID_HANDLE_VALUE;
    patiently([&] {
      constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
      opened = CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
      return opened != INVALID_HANDLE_VALUE;
    });
    const DWORD code = GetLastError();
    const Handle handle(opened);
    if (!handle.isOpen()) fail(file, "read", code);
    if (GetFileType(handle.get()) != FILE_TYPE_DISK) fail(file, "read", ERROR_BAD_FILE_TYPE);

    std::string bytes;
    char block[1 << 16];
    for (;;) {
      DWORD got = 0;
      if (ReadFile(handle.get(), block, sizeof block, &got, nullptr) == 0) fail(file, "read");
      if (got == 0) return bytes;
      bytes.append(block, got);
      if (bytes.size() > limit) throw DiskError(file, "read", std::make_error_code(std::errc::file_too_large));
    }
  }

  std::unique_ptr<File> create(const fs::path& temporary, const fs::path& target) override {
    refuseUnwritable(target);
    const HANDLE opened = CreateFileW(checked(temporary, "written").c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) fail(target, "written");
    return std::make_unique<WindowsFile>(target, opened);
  }

  void replace(const fs::path& temporary, const fs::path& target) override {
    const std::wstring from = checked(temporary, "written");
    const std::wstring to = checked(target, "written");
    const bool moved = patiently(
        [&] { return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0; });
    if (!moved) fail(target, "written", hindrance(to, GetLastError()));
  }

  bool remove(const fs::path& file) override {
    const std::wstring path = checked(file, "deleted");
    const auto attributes = attributesOf(file, path, "deleted");
    if (!attributes) return false;
    if (kindOf(*attributes) == EntryKind::folder)
      throw DiskError(file, "deleted", std::make_error_code(std::errc::is_a_directory));
    if (patiently([&] { return DeleteFileW(path.c_str()) != 0; })) return true;
    const DWORD code = GetLastError();
    if (!isAbsent(code)) fail(file, "deleted", hindrance(path, code));
    return false;
  }

  void createFolder(const fs::path& folder) override {
    if (CreateDirectoryW(checked(folder, "created").c_str(), nullptr) != 0) return;
    const DWORD code = GetLastError();
    if (kind(folder) != EntryKind::folder) fail(folder, "created", code);
  }

  void syncFolder(const fs::path&) override {}

  std::unique_ptr<Lock> tryLock(const fs::path& file, Missing missing) override {
    const DWORD creation = missing == Missing::created ? OPEN_ALWAYS : OPEN_EXISTING;
    const HANDLE opened = CreateFileW(checked(file, "locked").c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, creation,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION) return nullptr;
    if (opened == INVALID_HANDLE_VALUE) fail(file, "locked");
    auto lock = std::make_unique<WindowsLock>(opened);
    OVERLAPPED start{};
    if (LockFileEx(opened, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &start) != 0) return lock;
    if (const DWORD code = GetLastError(); code != ERROR_LOCK_VIOLATION && code != ERROR_IO_PENDING)
      fail(file, "locked", code);
    return nullptr;
  }

 private:
  static EntryKind kindOf(DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return EntryKind::folder;
    return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? EntryKind::other : EntryKind::file;
  }

  // Other reparse points, such as cloud files, are regular entries.
  static bool isLink(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK || found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  }

  static long long ticks(const FILETIME& time) {
    return static_cast<long long>((static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
  }

  static void refuseUnwritable(const fs::path& target) {
    const auto attributes = attributesOf(target, checked(target, "written"), "written");
    if (!attributes) return;
    if (kindOf(*attributes) == EntryKind::folder)
      throw DiskError(target, "written", std::make_error_code(std::errc::is_a_directory));
    if (kindOf(*attributes) != EntryKind::file) fail(target, "written", ERROR_BAD_FILE_TYPE);
    if ((*attributes & FILE_ATTRIBUTE_READONLY) != 0) fail(target, "written", ERROR_ACCESS_DENIED);
  }
};

}  // namespace

std::function<void()> pauseBetweenAttempts = [] { Sleep(20); };  // ms

Disk& realDisk() {
  static WindowsDisk disk;
  return disk;
}

long processNumber() { return static_cast<long>(GetCurrentProcessId()); }

bool processRuns(long number) {
  const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(number));
  if (process == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
  const bool runs = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
  CloseHandle(process);
  return runs;
}

}  // namespace Files
