#include "tests/script/process.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

std::string inQuotes(const std::string& word) {
  std::string quoted = "'";
  for (const char unit : word) quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
  return quoted + "'";
}

}  // namespace

Outcome runKiln(const std::vector<std::string>& words, const std::string& input,
                const std::vector<std::string>& environment) {
  const auto folder = testFolder() / "run";
  std::filesystem::create_directories(folder);
  writeFile(folder / "in", input);
  std::string line = "env";
  for (const std::string& setting : environment) line += ' ' + inQuotes(setting);
  line += ' ' + inQuotes(KILN);
  for (const std::string& word : words) line += ' ' + inQuotes(word);
  line += " <" + inQuotes((folder / "in").string()) + " >" + inQuotes((folder / "out").string()) + " 2>" +
          inQuotes((folder / "err").string());
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(folder / "out"), readFile(folder / "err")};
}

std::filesystem::path testFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  static const auto* lastTest = test;
  static std::filesystem::path folder;
  if (folder.empty() || test != lastTest) {
    folder = std::filesystem::path(testing::TempDir()) / "kiln-tests" /
             (std::string(test->test_suite_name()) + '.' + test->name());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    lastTest = test;
  }
  return folder;
}

void writeFile(const std::filesystem::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

std::string readFile(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}
