#include "tests/script/process.h"

#include <sys/wait.h>

#include <cstdlib>

namespace {

std::string inQuotes(const std::string& word) {
  std::string quoted = "'";
  for (const char unit : word) quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
  return quoted + "'";
}

}  // namespace

int runProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               const StandardFiles& files) {
  // Sentences are English unless a test says otherwise.
  std::string line = "env -u LC_ALL -u LC_MESSAGES -u LANGUAGE LANG=C.UTF-8";
  for (const std::string& setting : environment) line += ' ' + inQuotes(setting);
  for (const std::string& word : words) line += ' ' + inQuotes(word);
  line += " <" + inQuotes(files.in) + " >" + inQuotes(files.out) + " 2>" + inQuotes(files.err);
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
