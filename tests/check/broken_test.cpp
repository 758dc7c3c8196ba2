// Every check can fail: for each there is a library that breaks what it holds, and little else.
#include "check/lists.h"
#include "tests/script/process.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
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

// What `kiln check` tells of a plug-in, and of a host.
nlohmann::json reportOf(const std::string& library, std::vector<std::string> options) {
  options.insert(options.begin(), {"check", libraryOf(library).string(), "--json"});
  return nlohmann::json::parse(runKiln(options).out);
}
nlohmann::json pluginReport(const std::string& library, std::vector<std::string> options = {}) {
  options.insert(options.end(), {"--model", "sound", "--resources", (folder / "resources").string()});
  return reportOf(library, options);
}
nlohmann::json hostReport(const std::string& library, std::vector<std::string> options = {}) {
  options.emplace_back("--host");
  return reportOf(library, options);
}

std::set<std::string> failuresOf(const nlohmann::json& report) {
  std::set<std::string> ids;
  for (const auto& check : report["checks"])
    if (check["result"] == "failed" || check["result"] == "crashed") ids.insert(check["id"]);
  return ids;
}

// A busy machine is no reason to fail. The checks that should fail run alone, unless EVERY_CHECK is set in the
// environment: then the others pass.
std::vector<std::string> optionsFor(const std::set<std::string>& ids) {
  std::vector<std::string> options = {"--seconds", "600"};
  if (std::getenv("EVERY_CHECK") == nullptr)
    for (const std::string& id : ids) options.insert(options.end(), {"--only", id});
  return options;
}

std::vector<std::string> namesOf(const std::string& kind) {
  std::vector<std::string> names;
  for (const auto& [name, ids] : expected(kind)) names.push_back(name);
  return names;
}

class BrokenPlugin : public testing::TestWithParam<std::string> {};

TEST_P(BrokenPlugin, FailsItsChecks) {
  const std::set<std::string> ids = expected("broken").at(GetParam());
  const auto report = pluginReport(GetParam(), optionsFor(ids));
  EXPECT_EQ(failuresOf(report), ids) << report.dump(1);
}

INSTANTIATE_TEST_SUITE_P(Each, BrokenPlugin, testing::ValuesIn(namesOf("broken")),
                         [](const auto& name) { return name.param; });

class BrokenHost : public testing::TestWithParam<std::string> {};

TEST_P(BrokenHost, FailsItsChecks) {
  const std::set<std::string> ids = expected("broken_hosts").at(GetParam());
  const auto report = hostReport(GetParam(), optionsFor(ids));
  EXPECT_EQ(failuresOf(report), ids) << report.dump(1);
}

INSTANTIATE_TEST_SUITE_P(Each, BrokenHost, testing::ValuesIn(namesOf("broken_hosts")),
                         [](const auto& name) { return name.param; });

void expectAllCanFail(const std::vector<Checking::Check>& checks, const std::string& kind) {
  std::set<std::string> failed;
  for (const auto& [name, ids] : expected(kind)) failed.insert(ids.begin(), ids.end());
  for (const Checking::Check& check : checks) EXPECT_TRUE(failed.contains(check.id)) << check.id;
}

TEST(BrokenLibraries, LeaveNoCheckThatCannotFail) {
  expectAllCanFail(Checking::pluginChecks(), "broken");
  expectAllCanFail(Checking::hostChecks(), "broken_hosts");
}

TEST(BrokenLibraries, AreTheFoldersThatThereAre) {
  for (const char* kind : {"broken", "broken_hosts"}) {
    std::vector<std::string> folders;
    for (const auto& entry : std::filesystem::directory_iterator(folder / kind))
      folders.push_back(entry.path().filename().string());
    EXPECT_THAT(namesOf(kind), UnorderedElementsAreArray(folders));
  }
}

TEST(SoundPlugin, PassesEveryCheck) {
  const auto report = pluginReport("sound_plugin");
  EXPECT_EQ(failuresOf(report), std::set<std::string>()) << report.dump(1);
  EXPECT_EQ(report["skipped"], 0);
}

TEST(ReferenceHost, PassesEveryCheck) {
  const auto report = hostReport("packaged_host");
  EXPECT_EQ(failuresOf(report), std::set<std::string>()) << report.dump(1);
  EXPECT_EQ(report["skipped"], 0);
}

}  // namespace
