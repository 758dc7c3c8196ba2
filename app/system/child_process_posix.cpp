#include "app/system/child_process.h"
#include "files/system_reason.h"
#include "formats/sentences.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace App {
namespace {

using Clock = std::chrono::steady_clock;

// The standard streams of a process, which lead nowhere.
class Streams {
 public:
  Streams() {
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  ~Streams() { posix_spawn_file_actions_destroy(&actions); }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;

  posix_spawn_file_actions_t actions;
};

pid_t start(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {"kiln"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const Streams streams;
  pid_t process = 0;
  const int error = posix_spawn(&process, "/proc/self/exe", &streams.actions, nullptr, pointers.data(), environ);
  if (error != 0)
    throw std::runtime_error(
        Formats::sentence("A process cannot be started: {1}.", Files::systemReason({error, std::generic_category()})));
  return process;
}

// The status of a process that has ended within that time; nothing is waited for when `longest` is zero.
bool waitFor(pid_t process, std::chrono::milliseconds longest, int& status) {
  const auto end = Clock::now() + longest;
  while (true) {
    const pid_t ended = waitpid(process, &status, WNOHANG);
    if (ended == process) return true;
    if (ended < 0 && errno != EINTR) throw std::runtime_error(Formats::sentence("A process cannot be waited for."));
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace

ProcessEnd runThisProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds longest) {
  const pid_t process = start(arguments);
  int status = 0;
  if (!waitFor(process, longest, status)) {
    kill(process, SIGKILL);
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    return {ProcessEnd::How::stopped};
  }
  if (WIFSIGNALED(status)) return {ProcessEnd::How::crashed, static_cast<unsigned long>(WTERMSIG(status))};
  return {ProcessEnd::How::ended, static_cast<unsigned long>(WEXITSTATUS(status))};
}

std::string nameOfCrash(unsigned long code) {
  return "signal " + std::to_string(code) + " (" + strsignal(static_cast<int>(code)) + ")";
}

void crashQuietly() {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

}  // namespace App
