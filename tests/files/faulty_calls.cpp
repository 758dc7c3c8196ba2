#include "tests/files/faulty_calls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace FaultyCalls {
namespace {

struct State {
  std::mutex lock;
  Plan plan;
  Report report;
  int counted = 0;
  std::map<int, std::string> files;
  std::map<DIR*, std::string> folders;
  int log = -1;
};

constexpr const char* planVariable = "FAULTY_CALLS";
constexpr const char* logVariable = "FAULTY_CALLS_LOG";

// The next part of a text whose parts end with ":".
std::string takePart(std::string& text) {
  const std::size_t end = std::min(text.find(':'), text.size());
  std::string part = text.substr(0, end);
  text.erase(0, end + 1);
  return part;
}

// Never destroyed, since calls come until the process has ended.
State& state() {
  static State& only = *[] {
    auto* made = new State;
    const char* planned = std::getenv(planVariable);
    const char* log = std::getenv(logVariable);
    if (planned == nullptr || log == nullptr) return made;
    std::string rest = planned;
    made->plan.call = takePart(rest);
    made->plan.at = std::atoi(takePart(rest).c_str());
    made->plan.error = std::atoi(takePart(rest).c_str());
    made->plan.amount = std::atol(takePart(rest).c_str());
    made->plan.folder = rest;
    made->log = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
    return made;
  }();
  return only;
}

// The function of the C library that is called `name`.
template <class Function>
Function* following(Function*, const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool counts(const State& now, const std::string& path) {
  const std::string& folder = now.plan.folder;
  return !folder.empty() && path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

void record(State& now, const std::string& line) {
  if (now.log < 0) return now.report.calls.push_back(line);
  const std::string whole = line + '\n';
  static_cast<void>(::syscall(SYS_write, now.log, whole.data(), whole.size()));
}

// Whether the call is the one to fail; with an error in errno, unless it is to be short.
bool isToFail(const char* call, const std::string& path, const std::string& newPath = {}) {
  State& now = state();
  const std::lock_guard hold(now.lock);
  if (!counts(now, path)) return false;
  record(now, call + (' ' + path) + (newPath.empty() ? "" : ' ' + newPath));
  if (now.plan.call != call || now.plan.at == 0) return false;
  ++now.counted;
  if (now.plan.at > 0 ? now.counted != now.plan.at : now.counted < -now.plan.at) return false;
  if (now.report.failed.empty()) now.report.failed = path;
  if (now.log >= 0) record(now, "! " + path);
  if (now.plan.error != 0) errno = now.plan.error;
  return true;
}

std::string pathOf(int file) {
  State& now = state();
  const std::lock_guard hold(now.lock);
  const auto found = now.files.find(file);
  return found == now.files.end() ? std::string() : found->second;
}

std::string pathAt(int folder, const char* name) {
  const std::string in = *name == '/' ? std::string() : pathOf(folder);
  return in.empty() ? name : in + '/' + name;
}

int opened(int file, const std::string& path) {
  if (file < 0) return file;
  State& now = state();
  const std::lock_guard hold(now.lock);
  if (counts(now, path)) now.files[file] = path;
  return file;
}

DIR* opened(DIR* folder, const std::string& path) {
  if (folder == nullptr) return folder;
  State& now = state();
  const std::lock_guard hold(now.lock);
  if (counts(now, path)) now.folders[folder] = path;
  return folder;
}

std::string pathOf(DIR* folder) {
  State& now = state();
  const std::lock_guard hold(now.lock);
  const auto found = now.folders.find(folder);
  return found == now.folders.end() ? std::string() : found->second;
}

// The amount to read or write instead; nothing when the call reports an error.
std::optional<std::size_t> shortened(std::size_t size) {
  const Plan& plan = state().plan;
  if (plan.error != 0) return {};
  return std::min(size, static_cast<std::size_t>(plan.amount));
}

mode_t modeOf(int flags, va_list rest) {
  const bool isGiven = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return isGiven ? static_cast<mode_t>(va_arg(rest, unsigned)) : 0;
}

int openIn(int folder, const char* name, int flags, mode_t mode) {
  static auto* const next = following(&::openat, "openat");
  const std::string path = pathAt(folder, name);
  if (isToFail("open", path)) return -1;
  return opened(next(folder, name, flags, mode), path);
}

}  // namespace

void make(const Plan& plan) {
  State& now = state();
  const std::lock_guard hold(now.lock);
  now.plan = plan;
  now.report = {};
  now.counted = 0;
  now.files.clear();
  now.folders.clear();
}

Report end() {
  State& now = state();
  const std::lock_guard hold(now.lock);
  now.plan = {};
  now.report.open = static_cast<int>(now.files.size() + now.folders.size());
  return std::exchange(now.report, {});
}

std::vector<std::string> environment(const std::string& library, const Plan& plan, const std::string& log) {
  const std::string numbers =
      std::to_string(plan.at) + ':' + std::to_string(plan.error) + ':' + std::to_string(plan.amount);
  return {"LD_PRELOAD=" + library, std::string(planVariable) + '=' + plan.call + ':' + numbers + ':' + plan.folder,
          std::string(logVariable) + '=' + log};
}

}  // namespace FaultyCalls

using namespace FaultyCalls;

extern "C" {

int open(const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openIn(AT_FDCWD, name, flags, mode);
}

int open64(const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openIn(AT_FDCWD, name, flags, mode);
}

int openat(int folder, const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openIn(folder, name, flags, mode);
}

int openat64(int folder, const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openIn(folder, name, flags, mode);
}

FILE* fopen(const char* name, const char* mode) {
  static auto* const next = following(&::fopen, "fopen");
  return isToFail("open", name) ? nullptr : next(name, mode);
}

FILE* fopen64(const char* name, const char* mode) {
  static auto* const next = following(&::fopen64, "fopen64");
  return isToFail("open", name) ? nullptr : next(name, mode);
}

int stat(const char* name, struct stat* status) __THROW {
  static auto* const next = following(&::fstatat, "fstatat");
  return isToFail("stat", name) ? -1 : next(AT_FDCWD, name, status, 0);
}

int stat64(const char* name, struct stat64* status) __THROW {
  static auto* const next = following(&::fstatat64, "fstatat64");
  return isToFail("stat", name) ? -1 : next(AT_FDCWD, name, status, 0);
}

int lstat(const char* name, struct stat* status) __THROW {
  static auto* const next = following(&::fstatat, "fstatat");
  return isToFail("lstat", name) ? -1 : next(AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW);
}

int lstat64(const char* name, struct stat64* status) __THROW {
  static auto* const next = following(&::fstatat64, "fstatat64");
  return isToFail("lstat", name) ? -1 : next(AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW);
}

int fstatat(int folder, const char* name, struct stat* status, int flags) __THROW {
  static auto* const next = following(&::fstatat, "fstatat");
  return isToFail("stat", pathAt(folder, name)) ? -1 : next(folder, name, status, flags);
}

int fstatat64(int folder, const char* name, struct stat64* status, int flags) __THROW {
  static auto* const next = following(&::fstatat64, "fstatat64");
  return isToFail("stat", pathAt(folder, name)) ? -1 : next(folder, name, status, flags);
}

int fstat(int file, struct stat* status) __THROW {
  static auto* const next = following(&::fstat, "fstat");
  return isToFail("fstat", pathOf(file)) ? -1 : next(file, status);
}

int fstat64(int file, struct stat64* status) __THROW {
  static auto* const next = following(&::fstat64, "fstat64");
  return isToFail("fstat", pathOf(file)) ? -1 : next(file, status);
}

ssize_t read(int file, void* bytes, size_t size) {
  static auto* const next = following(&::read, "read");
  if (!isToFail("read", pathOf(file))) return next(file, bytes, size);
  const auto less = shortened(size);
  return less ? next(file, bytes, *less) : -1;
}

ssize_t write(int file, const void* bytes, size_t size) {
  static auto* const next = following(&::write, "write");
  if (!isToFail("write", pathOf(file))) return next(file, bytes, size);
  const auto less = shortened(size);
  return less ? next(file, bytes, *less) : -1;
}

int fsync(int file) {
  static auto* const next = following(&::fsync, "fsync");
  return isToFail("fsync", pathOf(file)) ? -1 : next(file);
}

int close(int file) {
  static auto* const next = following(&::close, "close");
  const bool fails = isToFail("close", pathOf(file));
  const int error = errno;
  {
    State& now = state();
    const std::lock_guard hold(now.lock);
    now.files.erase(file);
  }
  const int result = next(file);
  if (!fails) return result;
  errno = error;
  return -1;
}

int rename(const char* from, const char* to) __THROW {
  static auto* const next = following(&::rename, "rename");
  return isToFail("rename", from, to) ? -1 : next(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) __THROW {
  static auto* const next = following(&::renameat, "renameat");
  const bool fails = isToFail("rename", pathAt(fromFolder, from), pathAt(toFolder, to));
  return fails ? -1 : next(fromFolder, from, toFolder, to);
}

int unlink(const char* name) __THROW {
  static auto* const next = following(&::unlink, "unlink");
  return isToFail("unlink", name) ? -1 : next(name);
}

int unlinkat(int folder, const char* name, int flags) __THROW {
  static auto* const next = following(&::unlinkat, "unlinkat");
  return isToFail("unlink", pathAt(folder, name)) ? -1 : next(folder, name, flags);
}

int mkdir(const char* name, mode_t mode) __THROW {
  static auto* const next = following(&::mkdir, "mkdir");
  return isToFail("mkdir", name) ? -1 : next(name, mode);
}

int fchmod(int file, mode_t mode) __THROW {
  static auto* const next = following(&::fchmod, "fchmod");
  return isToFail("fchmod", pathOf(file)) ? -1 : next(file, mode);
}

int faccessat(int folder, const char* name, int mode, int flags) __THROW {
  static auto* const next = following(&::faccessat, "faccessat");
  return isToFail("faccessat", pathAt(folder, name)) ? -1 : next(folder, name, mode, flags);
}

DIR* opendir(const char* name) {
  static auto* const next = following(&::opendir, "opendir");
  return isToFail("opendir", name) ? nullptr : opened(next(name), name);
}

DIR* fdopendir(int file) {
  static auto* const next = following(&::fdopendir, "fdopendir");
  const std::string path = pathOf(file);
  if (isToFail("opendir", path)) return nullptr;
  DIR* const folder = opened(next(file), path);
  if (folder == nullptr) return folder;
  State& now = state();
  const std::lock_guard hold(now.lock);
  now.files.erase(file);  // closedir closes it
  return folder;
}

struct dirent* readdir(DIR* folder) {
  static auto* const next = following(&::readdir, "readdir");
  return isToFail("readdir", pathOf(folder)) ? nullptr : next(folder);
}

struct dirent64* readdir64(DIR* folder) {
  static auto* const next = following(&::readdir64, "readdir64");
  return isToFail("readdir", pathOf(folder)) ? nullptr : next(folder);
}

int closedir(DIR* folder) {
  static auto* const next = following(&::closedir, "closedir");
  {
    State& now = state();
    const std::lock_guard hold(now.lock);
    now.folders.erase(folder);
  }
  return next(folder);
}

}  // extern "C"
