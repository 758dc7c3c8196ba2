#include "app/system/confinement.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// The leak check at the end of a sanitized process traces it, reads what the system tells of it, and runs a program
// that knows the names of functions.
#if defined(__SANITIZE_ADDRESS__)
#define KILN_IS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KILN_IS_SANITIZED
#endif
#endif

namespace App {
namespace {

namespace fs = std::filesystem;

// The rights of later kernels than the headers that this is compiled with may know.
constexpr std::uint64_t mayTruncate = std::uint64_t{1} << 14;
constexpr std::uint64_t mayControlDevices = std::uint64_t{1} << 15;
constexpr std::uint64_t mayUseTcp = 3;      // bind, connect
constexpr std::uint64_t mayLeaveScope = 3;  // abstract sockets, signals

#ifdef KILN_IS_SANITIZED
constexpr std::uint64_t mayRead = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_EXECUTE;
#else
constexpr std::uint64_t mayRead = LANDLOCK_ACCESS_FS_READ_FILE;
#endif
constexpr std::uint64_t mayList = LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t mayRemoveFolders = LANDLOCK_ACCESS_FS_REMOVE_DIR;
constexpr std::uint64_t mayWrite = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                                   LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_DIR;

// As the kernel has it; older ones take its start.
struct RulesetAttributes {
  std::uint64_t files;
  std::uint64_t net;
  std::uint64_t scopes;
};

// The rights that a version of the kernel's interface can take away.
RulesetAttributes everythingKnownTo(long version) {
  RulesetAttributes all = {(LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1, 0, 0};
  if (version >= 2) all.files |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= 3) all.files |= mayTruncate;
  if (version >= 4) all.net = mayUseTcp;
  if (version >= 5) all.files |= mayControlDevices;
  if (version >= 6) all.scopes = mayLeaveScope;
  return all;
}

std::size_t sizeFor(long version) {
  if (version < 4) return offsetof(RulesetAttributes, net);
  return version < 6 ? offsetof(RulesetAttributes, scopes) : sizeof(RulesetAttributes);
}

class Descriptor {
 public:
  explicit Descriptor(long number) : handle(static_cast<int>(number)) {}
  ~Descriptor() {
    if (handle >= 0) close(handle);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  const int handle;
};

// The files that this thread can reach.
class Ruleset {
 public:
  Ruleset()
      : version(syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION)),
        all(everythingKnownTo(version)),
        set(version < 1 ? -1 : syscall(SYS_landlock_create_ruleset, &all, sizeFor(version), 0)) {}

  // Lets a file, or a folder and everything below it, be used in these ways. False when that cannot be.
  bool allow(const fs::path& place, std::uint64_t rights) const {
    const Descriptor opened(open(place.c_str(), O_PATH | O_CLOEXEC));
    struct stat status{};
    if (opened.handle < 0 || fstat(opened.handle, &status) != 0) return false;
    if (!S_ISDIR(status.st_mode)) rights &= mayRead;
    const landlock_path_beneath_attr rule = {rights & all.files, opened.handle};
    return syscall(SYS_landlock_add_rule, set.handle, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
  }

  // Without a set, fails.
  bool enforce() const { return syscall(SYS_landlock_restrict_self, set.handle, 0) == 0; }

 private:
  const long version;
  const RulesetAttributes all;
  const Descriptor set;
};

bool confineFiles(const NeededFiles& files) {
  const Ruleset ruleset;
  for (const fs::path& place : files.toRead) ruleset.allow(place, mayRead | mayList);
#ifdef KILN_IS_SANITIZED
  ruleset.allow("/proc", mayRead | mayList);
  std::error_code ignored;
  ruleset.allow(fs::read_symlink("/proc/self/exe", ignored).parent_path(), mayRead | mayList);  // for names in reports
  // The leaks that are known, for the report at the end.
  const std::string options = std::getenv("LSAN_OPTIONS") ? std::getenv("LSAN_OPTIONS") : "";
  constexpr std::string_view name = "suppressions=";
  if (const std::size_t at = options.find(name); at != options.npos) {
    const std::size_t begin = at + name.size();
    ruleset.allow(options.substr(begin, options.find(':', begin) - begin), mayRead);
  }
#endif
  // A folder is removed from its parent.
  return ruleset.allow(files.toWrite, mayRead | mayList | mayWrite | mayTruncate | mayRemoveFolders) &&
         ruleset.allow(files.toWrite.parent_path(), mayRemoveFolders) && ruleset.enforce();
}

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
constexpr std::uint32_t firstOfAnotherTable = 0x40000000;  // the calls of 32-bit pointers
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
constexpr std::uint32_t firstOfAnotherTable = 0xFFFFFFFF;
#else
constexpr std::uint32_t architecture = 0;
constexpr std::uint32_t firstOfAnotherTable = 0;
#endif

// Calls that run programs, reach the network or other processes, or change what the process sees and may.
constexpr std::uint32_t refused[] = {
    SYS_execveat,
    SYS_socket,
    SYS_connect,
    SYS_bind,
    SYS_listen,
    SYS_accept,
    SYS_accept4,
    SYS_tkill,
#ifndef KILN_IS_SANITIZED
    SYS_execve,
    SYS_socketpair,
    SYS_kill,
    SYS_ptrace,
    SYS_process_vm_readv,
#endif
    SYS_process_vm_writev,
    SYS_pidfd_open,
    SYS_pidfd_getfd,
    SYS_pidfd_send_signal,
    SYS_rt_sigqueueinfo,
    SYS_rt_tgsigqueueinfo,
    SYS_process_madvise,
    SYS_unshare,
    SYS_setns,
    SYS_mount,
    SYS_umount2,
    SYS_pivot_root,
    SYS_chroot,
    SYS_open_by_handle_at,
    SYS_add_key,
    SYS_request_key,
    SYS_keyctl,
    SYS_bpf,
    SYS_perf_event_open,
    SYS_userfaultfd,
    SYS_io_uring_setup,
    SYS_personality,
    SYS_init_module,
    SYS_finit_module,
    SYS_delete_module,
    SYS_kexec_load,
};

constexpr sock_filter load(std::size_t offset) {
  return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}

constexpr sock_filter answer(std::uint32_t action) { return BPF_STMT(BPF_RET | BPF_K, action); }

constexpr std::uint32_t errorOf(int code) { return SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(code); }

// Skips the next instruction unless the loaded value is this one.
constexpr sock_filter isIt(std::uint32_t value) { return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1); }

// The kernel's program that decides about each call.
std::vector<sock_filter> callFilter() {
  std::vector<sock_filter> program = {
      load(offsetof(seccomp_data, arch)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
      answer(errorOf(EPERM)),
      load(offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, firstOfAnotherTable, 0, 1),
      answer(errorOf(EPERM)),
  };
  for (const std::uint32_t call : refused) {
    program.push_back(isIt(call));
    program.push_back(answer(errorOf(EPERM)));
  }
  // To itself, as abort() does.
  program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_tgkill, 0, 4));
  program.push_back(load(offsetof(seccomp_data, args)));
  program.push_back(isIt(static_cast<std::uint32_t>(getpid())));
  program.push_back(answer(SECCOMP_RET_ALLOW));
  program.push_back(answer(errorOf(EPERM)));
  // Its flags are in memory, which the kernel's program does not see; the C library then uses the older call.
  program.push_back(isIt(SYS_clone3));
  program.push_back(answer(errorOf(ENOSYS)));
  program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3));
  program.push_back(load(offsetof(seccomp_data, args)));
  program.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_NEWUSER, 0, 1));
  program.push_back(answer(errorOf(EPERM)));
  program.push_back(answer(SECCOMP_RET_ALLOW));
  return program;
}

bool confineCalls() {
  if (architecture == 0) return false;
  std::vector<sock_filter> program = callFilter();
  const sock_fprog whole = {static_cast<unsigned short>(program.size()), program.data()};
  return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &whole) == 0;
}

}  // namespace

Confined confine(const NeededFiles& files) {
  // Without this, an ordinary user cannot confine a process; and programs cannot gain rights by it.
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return {};
  Confined result;
  result.toFiles = confineFiles(files);
  result.toCalls = confineCalls();
  return result;
}

}  // namespace App
