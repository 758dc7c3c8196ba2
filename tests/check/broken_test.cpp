// Every check can fail: for each there is a library that breaks what it holds, and little else.
#include "check/lists.h"
#include "tests/script/process.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace {

using testing::UnorderedElementsAreArray;

const std::filesystem::path folder = CHECK_FOLDER;

// The checks that each library fails or crashes: lines of "LIBRARY: ID ID".
std::map<std::string, std::set<std::string>> expected(const std::string& kind) {
  std::map<std::string, std::set<std::string>> libraries;
  std::ifstream file(folder / (kind + ".txt"));
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream words(line.substr(line.find(':') + 1));
    std::set<std::string>& ids = libraries[line.substr(0, line.find(':'))];
    for (std::string id; words >> id;) ids.insert(id);
  }
  return libraries;
}

std::filesystem::path libraryOf(const std::string& name) {
  return std::filesystem::path(LIBRARIES_FOLDER) / (name + LIBRARY_ENDING);
}

// What `kiln check` tells of a library.
nlohmann::json reportOf(const std::string& library, std::vector<std::string> options) {
  std::vector<std::string> words = {"check",       libraryOf(library).string(),    "--json", "--model", "sound",
                                    "--resources", (folder / "resources").string()};
  words.insert(words.end(), options.begin(), options.end());
  return nlohmann::json::parse(runKiln(words).out);
}

std::set<std::string> failuresOf(const nlohmann::json& report) {
  std::set<std::string> ids;
  for (const auto& check : report["checks"])
    if (check["result"] == "failed" || check["result"] == "crashed") ids.insert(check["id"]);
  return ids;
}

class BrokenPlugin : public testing::TestWithParam<std::string> {};

// Under Wine a process takes a second to start: there the checks that should fail run alone.
TEST_P(BrokenPlugin, FailsItsChecksAndNoOther) {
  const std::set<std::string> ids = expected("broken").at(GetParam());
  std::vector<std::string> options = {"--seconds", "600"};
#ifdef _WIN32
  for (const std::string& id : ids) options.insert(options.end(), {"--only", id});
#endif
  const auto report = reportOf(GetParam(), options);
  EXPECT_EQ(failuresOf(report), ids) << report.dump(1);
}

std::vector<std::string> brokenPlugins() {
  std::vector<std::string> names;
  for (const auto& [name, ids] : expected("broken")) names.push_back(name);
  return names;
}

INSTANTIATE_TEST_SUITE_P(Each, BrokenPlugin, testing::ValuesIn(brokenPlugins()),
                         [](const auto& name) { return name.param; });

TEST(BrokenPlugins, LeaveNoCheckThatCannotFail) {
  std::set<std::string> failed;
  for (const auto& [name, ids] : expected("broken")) failed.insert(ids.begin(), ids.end());
  for (const Checking::Check& check : Checking::pluginChecks()) EXPECT_TRUE(failed.contains(check.id)) << check.id;
}

TEST(BrokenPlugins, AreTheFoldersThatThereAre) {
  std::vector<std::string> folders;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "broken"))
    folders.push_back(entry.path().filename().string());
  EXPECT_THAT(brokenPlugins(), UnorderedElementsAreArray(folders));
}

TEST(SoundPlugin, PassesEveryCheck) {
  const auto report = reportOf("sound_plugin", {});
  EXPECT_EQ(failuresOf(report), std::set<std::string>()) << report.dump(1);
  EXPECT_EQ(report["skipped"], 0);
}

}  // namespace
