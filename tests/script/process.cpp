#include "tests/script/process.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

namespace {

std::string withoutIdentifier(std::string pdf) {
  const auto begin = pdf.rfind("/ID [");
  if (begin != pdf.npos) pdf.erase(begin, pdf.find(']', begin) - begin);
  return pdf;
}

}  // namespace

Outcome runProgram(const std::string& program, const std::vector<std::string>& words, const std::string& input,
                   const std::vector<std::string>& environment) {
  const auto folder = testFolder() / "run";
  std::filesystem::create_directories(folder);
  const StandardFiles files = {folder / "in", folder / "out", folder / "err"};
  writeFile(files.in, input);
  std::vector<std::string> command = {program};
  command.insert(command.end(), words.begin(), words.end());
  const int status = runProcess(command, environment, files);
  return {status, readFile(files.out), readFile(files.err)};
}

Outcome runKiln(const std::vector<std::string>& words, const std::string& input,
                const std::vector<std::string>& environment) {
  return runProgram(KILN, words, input, environment);
}

std::filesystem::path testFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  static const auto* lastTest = test;
  static std::filesystem::path folder;
  if (folder.empty() || test != lastTest) {
    // One per build, since several builds may be tested concurrently.
    const std::string build = std::to_string(std::hash<std::string>()(KILN));
    folder = std::filesystem::path(testing::TempDir()) / ("kiln-tests-" + build) /
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

bool samePages(const std::string& onePdf, const std::string& otherPdf) {
  return withoutIdentifier(onePdf) == withoutIdentifier(otherPdf);
}
