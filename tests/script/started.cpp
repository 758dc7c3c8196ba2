#include "tests/script/started.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

Started::Started(const std::vector<std::string>& words, const std::filesystem::path& in,
                 const std::filesystem::path& out, const std::filesystem::path& err,
                 const std::vector<std::string>& environment) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  constexpr int writing = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), writing, 0666);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), writing, 0666);
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  std::vector<char*> settings;
  for (const std::string& setting : environment) settings.push_back(const_cast<char*>(setting.c_str()));
  for (char** inherited = environ; *inherited != nullptr; ++inherited) settings.push_back(*inherited);
  settings.push_back(nullptr);
  // It hears what it is sent, also where the tests were started to ignore it.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t heard;
  sigemptyset(&heard);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&heard, number);
  posix_spawnattr_setsigdefault(&attributes, &heard);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  const int error =
      posix_spawn(&process, words.front().c_str(), &files, &attributes, arguments.data(), settings.data());
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (error != 0) throw std::system_error(error, std::generic_category(), words.front());
}

Started::~Started() {
  if (process == 0) return;
  signal(SIGKILL);
  wait();
}

void Started::signal(int number) const { kill(process, number); }

int Started::wait() {
  int status = 0;
  waitpid(std::exchange(process, 0), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool waitUntil(const std::function<bool()>& holds) {
  using namespace std::chrono_literals;
  const auto end = std::chrono::steady_clock::now() + 5min;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(10ms);
  }
  return true;
}
