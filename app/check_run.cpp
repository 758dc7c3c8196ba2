#include "app/check_run.h"

#include "app/system/child_process.h"

#include <fstream>
#include <iterator>

namespace App {
namespace {

constexpr CheckResult results[] = {CheckResult::passed, CheckResult::failed, CheckResult::crashed,
                                   CheckResult::skipped};

// The outcome in a file; a crash when the file has none, since the process has ended before.
bool readOutcome(const std::filesystem::path& file, CheckOutcome& outcome) {
  std::ifstream stream(file, std::ios::binary);
  std::string word;
  if (!std::getline(stream, word)) return false;
  for (const CheckResult result : results)
    if (word == nameOf(result)) {
      outcome = {result, std::string(std::istreambuf_iterator<char>(stream), {})};
      return true;
    }
  return false;
}

}  // namespace

const char* nameOf(CheckResult result) {
  switch (result) {
    case CheckResult::passed: return "passed";
    case CheckResult::failed: return "failed";
    case CheckResult::crashed: return "crashed";
    case CheckResult::skipped: break;
  }
  return "skipped";
}

CheckOutcome runHere(const Checking::Check& check, const Checking::Subject& subject) {
  try {
    check.run(subject);
  } catch (const Checking::Skipped& reason) {
    return {CheckResult::skipped, reason.what()};
  } catch (const Checking::Failed& reason) {
    return {CheckResult::failed, reason.what()};
  } catch (...) {
    return {CheckResult::failed, "An exception ends it: " + Checking::sentenceOfCurrentException()};
  }
  return {CheckResult::passed, {}};
}

void writeOutcome(const std::filesystem::path& file, const CheckOutcome& outcome) {
  std::ofstream stream(file, std::ios::binary);
  stream << nameOf(outcome.result) << '\n' << outcome.reason;
}

CheckOutcome runApart(const std::vector<std::string>& arguments, const std::filesystem::path& file, int seconds) {
  const ProcessEnd end = runThisProgram(arguments, std::chrono::seconds(seconds));
  if (end.how == ProcessEnd::How::stopped)
    return {CheckResult::failed, "It did not end within " + std::to_string(seconds) + " seconds."};
  if (end.how == ProcessEnd::How::crashed) return {CheckResult::crashed, "It crashed: " + nameOfCrash(end.code) + "."};
  CheckOutcome outcome{};
  if (readOutcome(file, outcome) && (end.code == 0 || outcome.result != CheckResult::passed)) return outcome;
  return {CheckResult::failed, "It ended the program with the status " + std::to_string(end.code) + "."};
}

}  // namespace App
