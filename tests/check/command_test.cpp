// The command kiln check.
#include "check/lists.h"
#include "tests/script/process.h"
#include "tests/script/usage.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

// The command that runs one check on a broken library.
std::vector<std::string> checkOf(const std::string& library, const std::string& id,
                                 const std::string& seconds = "300") {
  const std::string folder = CHECK_FOLDER;
  const std::string file = LIBRARIES_FOLDER "/" + library + LIBRARY_ENDING;
  return {"check", file, "--model", "sound", "--resources", folder + "/resources", "--only", id, "--seconds", seconds};
}

using testing::HasSubstr;
using testing::StartsWith;

TEST(CheckCommand, TellsOfItself) { expectHelp("check"); }

// The checks of plug-ins, then those of hosts.
std::vector<std::vector<Checking::Check>> allChecks() { return {Checking::pluginChecks(), Checking::hostChecks()}; }

TEST(CheckCommand, ListsItsChecks) {
  for (const bool isHost : {false, true}) {
    const auto outcome = runKiln(isHost ? std::vector<std::string>{"check", "--list", "--host"}
                                        : std::vector<std::string>{"check", "--list"});
    EXPECT_EQ(outcome.status, 0);
    const auto checks = allChecks()[isHost ? 1 : 0];
    for (const Checking::Check& check : checks) EXPECT_THAT(outcome.out, HasSubstr(check.sentence));
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(outcome.out, '\n')), checks.size());
  }
}

TEST(CheckCommand, NamesEachCheckOnce) {
  for (const auto& checks : allChecks()) {
    std::set<std::string> ids;
    for (const Checking::Check& check : checks) EXPECT_TRUE(ids.insert(check.id).second) << check.id;
  }
}

// docs/check.md has a table of the checks of plug-ins, and one of those of hosts.
TEST(CheckCommand, IsDocumentedAsItIs) {
  std::string table;
  for (const auto& checks : allChecks())
    for (const Checking::Check& check : checks)
      table += "| `" + std::string(check.id) + "` | " + check.sentence + " |\n";
  std::istringstream page(readFile(SOURCE_FOLDER "/docs/check.md"));
  std::string rows;
  for (std::string line; std::getline(page, line);)
    if (line.starts_with("| `")) rows += line + '\n';
  EXPECT_EQ(rows, table);
}

TEST(CheckCommand, IsPassedByThePlugin) {
  const auto outcome = runKiln({"check", "--seconds", "600"});
  EXPECT_EQ(outcome.status, 0) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr(" 0 failed, 0 crashed, 0 skipped\n"));
}

TEST(CheckCommand, RunsWhatIsAskedFor) {
  const auto outcome = runKiln({"check", "--json", "--only", "contract/ex*", "--only", "life-cycle/create"});
  EXPECT_EQ(outcome.status, 0);
  const auto report = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(report["passed"], 2);
  EXPECT_EQ(report["checks"][0]["id"], "contract/exports");
  EXPECT_EQ(report["checks"][1]["id"], "life-cycle/create");
  EXPECT_EQ(report["checks"][1]["result"], "passed");
}

TEST(CheckCommand, EndsWithOneWhenACheckFails) {
  const auto outcome = runKiln(checkOf("too_early", "life-cycle/before-ready"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, StartsWith("failed  life-cycle/before-ready"));
  EXPECT_THAT(outcome.out, HasSubstr("calls GUI::widgetById before"));
}

TEST(CheckCommand, TellsOfACrash) {
  const auto outcome = runKiln(checkOf("needs_widget", "layouts/missing-widget"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, StartsWith("crashed layouts/missing-widget"));
  EXPECT_THAT(outcome.out, HasSubstr("It crashed: "));
}

TEST(CheckCommand, EndsACheckThatDoesNotEnd) {
  const auto outcome = runKiln(checkOf("hanging", "life-cycle/rootless", "2"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, HasSubstr("It did not end within 2 seconds."));
}

TEST(CheckCommand, HoldsThePluginToWhatItsPackageSaysThatItNeeds) {
  const auto resources = testFolder() / "resources";
  std::filesystem::copy(KILN_RESOURCES, resources, std::filesystem::copy_options::recursive);
  const auto description = resources / "effect" / "content" / "plugin.xml";
  std::string text = readFile(description);
  const std::string need = R"(<property name="WatermarkSel" need=")";
  const auto place = text.find(need + "mandatory");
  ASSERT_NE(place, text.npos);
  std::ofstream(description) << text.replace(place + need.size(), 9, "optional");
  const auto outcome = runKiln({"check", "--only", "properties/missing", "--resources", resources.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out,
              HasSubstr("does not open without the property WatermarkSel, which its package does not call mandatory"));
}

TEST(CheckCommand, LooksForResourcesInSeveralFolders) {
  const auto mine = testFolder() / "mine";
  std::filesystem::create_directories(mine / "models");
  writeFile(mine / "models" / "mine.xml", R"(<model name="mine" label="Mine" extends="standard"/>)");
  const auto outcome = runKiln({"check", "--model", "mine", "--only", "life-cycle/doc-prop", "--only", "layouts/load",
                                "--resources", mine.string(), "--resources", KILN_RESOURCES});
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("2 passed, 0 failed, 0 crashed, 0 skipped"));
}

TEST(CheckCommand, RunsOneCheckInItsOwnProcess) {
  const auto outcome = runKiln({"check", "--here", "contract/version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "passed \n");
}

TEST(CheckCommand, RefusesWhatIsNotThere) {
  expectRefusal(runKiln({"check", "nowhere.so"}), {"There is no library", "nowhere.so"});
  expectRefusal(runKiln({"check", "--only", "nothing/*"}), {"No check has such an id"});
  expectRefusal(runKiln({"check", "--host"}), {"--host needs a LIBRARY"});
}

}  // namespace
