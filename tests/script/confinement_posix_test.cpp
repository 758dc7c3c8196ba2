// What a confined process can no longer do, and the print filter that confines itself.
#include "app/system/confinement.h"
#include "app/system/installed_fonts.h"
#include "tests/script/process.h"
#include "tests/script/started.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <thread>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

// The status with which `work` ends a process of its own.
int inProcess(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      _exit(work());
    } catch (...) {
      _exit(101);
    }
  }
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Whether the call fails for lack of permission.
bool isRefused(const std::function<long()>& call) {
  errno = 0;
  return call() < 0 && (errno == EACCES || errno == EPERM);
}

bool opens(const fs::path& file, int flags) {
  const int handle = open(file.c_str(), flags | O_CLOEXEC, 0600);
  if (handle >= 0) close(handle);
  return handle >= 0;
}

// Answers these calls as a kernel that does not know them.
void refuseCalls(const std::vector<std::uint32_t>& calls) {
  std::vector<sock_filter> program = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const std::uint32_t call : calls) {
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS));
  }
  program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog whole = {static_cast<unsigned short>(program.size()), program.data()};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &whole);
}

void hideLandlock() { refuseCalls({SYS_landlock_create_ruleset}); }

bool hasLandlock() { return syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) > 0; }

class Confinement : public testing::Test {
 protected:
  Confinement() {
    for (const fs::path& each : {readable, writable, elsewhere}) {
      fs::create_directories(each);
      writeFile(each / "file", "content");
    }
    fs::create_symlink(elsewhere / "file", readable / "link");
  }

  // The status of `work` in a confined process; 100 where it is not confined as far as this kernel can.
  int confined(const std::function<int()>& work) {
    return inProcess([&] {
      const bool isLandlocked = hasLandlock();
      const App::Confined result = App::confine({{readable, single, folder / "missing"}, writable});
      return result.toFiles == isLandlocked && result.toCalls ? work() : 100;
    });
  }

  const fs::path folder = testFolder();
  const fs::path readable = folder / "readable";
  const fs::path writable = folder / "temporary" / "kiln";
  const fs::path elsewhere = folder / "elsewhere";
  const fs::path single = elsewhere / "overlay";
};

TEST_F(Confinement, LeavesTheFilesThatAreNeeded) {
  writeFile(single, "form");
  EXPECT_EQ(confined([&] {
              if (!opens(readable / "file", O_RDONLY) || !opens(single, O_RDONLY)) return 1;
              if (!opens(writable / "new", O_RDWR | O_CREAT | O_EXCL) || !opens(writable / "new", O_WRONLY | O_TRUNC))
                return 2;
              fs::rename(writable / "new", writable / "file");
              return fs::remove(writable / "file") && rmdir(writable.c_str()) == 0 ? 0 : 3;
            }),
            0);
}

// A kernel without Landlock cannot keep it from files.
TEST_F(Confinement, ReachesNoOtherFile) {
  writeFile(single, "form");
  const auto work = [&] {
    const fs::path file = elsewhere / "file";
    if (!isRefused([&] { return open(file.c_str(), O_RDONLY); })) return 1;
    if (!isRefused([&] { return open((readable / "link").c_str(), O_RDONLY); })) return 2;
    if (!isRefused([&] { return open((readable / "file").c_str(), O_WRONLY); })) return 3;
    if (!isRefused([&] { return open((readable / "new").c_str(), O_WRONLY | O_CREAT, 0600); })) return 4;
    if (!isRefused([&] { return unlink(file.c_str()); })) return 5;
    if (!isRefused([&] { return mkdir((elsewhere / "new").c_str(), 0700); })) return 6;
    if (!isRefused([&] { return symlink("/etc/passwd", (writable / "link").c_str()); })) return 7;
    if (!isRefused([&] { return open("/etc/passwd", O_RDONLY); })) return 8;
    // Threads are confined as well.
    bool isThreadConfined = false;
    std::thread([&] { isThreadConfined = isRefused([&] { return open(file.c_str(), O_RDONLY); }); }).join();
    return isThreadConfined ? 0 : 9;
  };
  EXPECT_EQ(confined([&] { return hasLandlock() ? work() : 0; }), 0);
}

TEST_F(Confinement, RunsNoProgramAndReachesNoOtherProcess) {
  EXPECT_EQ(confined([] {
              char name[] = "/bin/true";
              char* const words[] = {name, nullptr};
              // The leak check of a sanitized process runs a program, and traces itself.
              if (!isSanitized) {
                if (!isRefused([&] { return execv(name, words); })) return 1;
                if (!isRefused([] { return kill(getppid(), 0); })) return 3;
                if (!isRefused([] { return ptrace(PTRACE_ATTACH, getppid(), nullptr, nullptr); })) return 6;
              }
              for (const int family : {AF_UNIX, AF_INET, AF_INET6, AF_NETLINK})
                if (!isRefused([&] { return socket(family, SOCK_DGRAM, 0); })) return 2;
              if (!isRefused([] { return unshare(CLONE_NEWUSER); })) return 4;
              if (!isRefused([] { return syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, 0, 0, 0, 0); })) return 5;
              return prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1 ? 0 : 7;
            }),
            0);
}

// Landlock, which keeps signals from other processes since Linux 6.12, is hidden.
TEST_F(Confinement, SignalsNoOtherProcess) {
  EXPECT_EQ(inProcess([&] {
              hideLandlock();
              if (!App::confine({{readable}, writable}).toCalls) return 100;
              if (!isRefused([] { return syscall(SYS_tgkill, getppid(), getppid(), 0); })) return 1;
              if (!isRefused([] { return syscall(SYS_tkill, getppid(), 0); })) return 2;
              return syscall(SYS_tgkill, getpid(), gettid(), 0) == 0 ? 0 : 3;
            }),
            0);
}

TEST_F(Confinement, LeavesAnAbortAsItIs) {
  const pid_t child = fork();
  if (child == 0) {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    App::confine({{readable}, writable});
    std::thread([] { std::abort(); }).join();
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT) << status;
}

TEST_F(Confinement, IsWhatTheKernelCanDo) {
  EXPECT_EQ(inProcess([&] {
              hideLandlock();
              const App::Confined result = App::confine({{readable}, writable});
              return !result.toFiles && result.toCalls && opens(elsewhere / "file", O_RDONLY) ? 0 : 1;
            }),
            0);
}

TEST(FontPlaces, AreFoldersAndFilesThatAreThere) {
  const auto places = App::fontPlaces();
  EXPECT_FALSE(places.empty());
  for (const fs::path& place : places) EXPECT_TRUE(place.is_absolute()) << place;
}

class ConfinedFilter : public testing::Test {
 protected:
  ConfinedFilter() {
    fs::create_directories(tickets);
    fs::create_directories(temporary);
    EXPECT_EQ(runKiln({"sample", job.string()}).status, 0);
    EXPECT_EQ(runKiln({"overlay", "create", "Form", job.string(), "--home", home.string()}).status, 0);
    writeFile(tickets / "office.xml",
              runKiln({"ticket", "--watermark", "Draft", "--overlay", "Form", "--home", home.string()}).out);
  }

  std::vector<std::string> words() const {
    return {KILN, "filter", "--tickets", tickets.string(), "7", "somebody", "A title", "1", ""};
  }

  std::string printed() {
    const fs::path file = folder / "printed.pdf";
    const fs::path ticket = tickets / "office.xml";
    EXPECT_EQ(
        runKiln({"print", job.string(), file.string(), "--ticket", ticket.string(), "--home", home.string()}).status,
        0);
    return readFile(file);
  }

  const fs::path folder = testFolder();
  const fs::path home = folder / "home";
  const fs::path tickets = folder / "tickets";
  const fs::path temporary = folder / "tmp";
  const fs::path job = folder / "job.pdf";
  const fs::path out = folder / "out";
  const fs::path err = folder / "err";
  const std::vector<std::string> environment = {"PRINTER=office", "TMPDIR=" + temporary.string()};
};

// The kernel's lines about a process.
std::string statusOf(const fs::path& process) { return readFile(process / "status"); }

TEST_F(ConfinedFilter, IsConfinedBeforeItReadsTheJob) {
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int writer = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  Started running(words(), pipe, out, err, environment);
  // It waits for the job, of which there is nothing yet.
  const fs::path process = fs::path("/proc") / std::to_string(running.id());
  EXPECT_TRUE(waitUntil([&] { return statusOf(process).find("Seccomp:\t2") != std::string::npos; }));
  EXPECT_THAT(statusOf(process), HasSubstr("NoNewPrivs:\t1"));
  running.signal(SIGTERM);
  EXPECT_EQ(running.wait(), 1);
  close(writer);
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(ConfinedFilter, PrintsOverlaysAndWatermarksAsTheCommandDoes) {
  for (const std::string form : {"a path", "standard input"}) {
    auto all = words();
    if (form == "a path") all.push_back(job.string());
    Started running(all, form == "a path" ? "/dev/null" : job.string(), out, err, environment);
    EXPECT_EQ(running.wait(), 0) << readFile(err);
    EXPECT_TRUE(samePages(readFile(out), printed())) << form << readFile(err);
    EXPECT_TRUE(fs::is_empty(temporary));
  }
  EXPECT_EQ(readFile(err).find("kernel does not confine") == std::string::npos, hasLandlock());
}

TEST_F(ConfinedFilter, PrintsWhereTheKernelCannotConfineIt) {
  EXPECT_EQ(inProcess([&] {
              hideLandlock();
              Started running(words(), job, out, err, environment);
              return running.wait();
            }),
            0);
  EXPECT_TRUE(samePages(readFile(out), printed()));
  EXPECT_THAT(readFile(err), HasSubstr("DEBUG: This kernel does not confine the filter to its files.\n"));
}

}  // namespace
