// General use of the kiln command: help, usage errors, and the options of drive.
#include "tests/script/usage.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <regex>
#include <sstream>

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::SizeIs;

std::vector<json> answersOf(const Outcome& outcome) {
  std::vector<json> answers;
  std::istringstream lines(outcome.out);
  for (std::string line; std::getline(lines, line);) answers.push_back(json::parse(line));
  return answers;
}

Outcome drive(std::vector<std::string> words, const std::string& script) {
  words.insert(words.begin(), "drive");
  return runKiln(words, script);
}

// The fake plug-in, whose tab only needs the fake resources.
std::vector<std::string> withFake(std::vector<std::string> words) {
  words.insert(words.end(), {"--plugin", FAKE_PLUGIN, "--resources", FAKE_RESOURCES});
  return words;
}

TEST(CommandLine, HelpIsWhatAnEmptyLineTells) {
  const auto outcome = runKiln({"--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("kiln drive"));
  EXPECT_EQ(runKiln({"help"}).out, outcome.out);
  EXPECT_EQ(runKiln({}).out, outcome.out);
}

TEST(CommandLine, EachCommandHasHelpWithExamplesAndExitStatuses) {
  for (const char* command : {"drive", "ticket"}) expectHelp(command);
}

TEST(CommandLine, VersionIsANumber) {
  EXPECT_TRUE(std::regex_match(runKiln({"--version"}).out, std::regex("kiln [0-9.]+\n")));
}

TEST(CommandLine, WrongUsageIsOneSentence) {
  const std::vector<std::vector<std::string>> wrong = {{"--nonsense"},
                                                       {"nonsense"},
                                                       {"help", "nonsense"},
                                                       {"drive", "--mode", "Doc"},
                                                       {"drive", "--dpi", "many"},
                                                       {"drive", "--config", "key"},
                                                       {"drive", "--property", "=value"},
                                                       {"drive", "--customise", "key"},
                                                       {"drive", "--model"},
                                                       {"ticket", "--set", "MirrorImage"}};
  for (const auto& words : wrong) expectRefusal(runKiln(words));
}

TEST(CommandLine, MessageIsALineThatNoTerminalObeys) {
  const std::string foreign = "a\n\x1B[31mb\u009Bc\u202Ed";
  const std::string shown = "a \uFFFD[31mb\uFFFDc\uFFFDd";
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{foreign}, {"drive", foreign}, {"drive", "--model", foreign}}) {
    const auto outcome = runKiln(words);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr(shown));
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
  }
}

TEST(DriveCommand, ExitStatusTellsWhetherEveryCommandWasAnsweredWithOk) {
  EXPECT_EQ(drive({}, "get MirrorImage\n").status, 0);
  EXPECT_EQ(drive({}, "get MirrorImage\nget None\n").status, 1);
}

TEST(DriveCommand, ScriptMayBeAFile) {
  const auto script = testFolder() / "script.drive";
  writeFile(script, "# a script\nget MirrorImage\n");
  const auto outcome = drive({script.string()}, "never read\n");
  EXPECT_EQ(outcome.out, "{\"ok\":true,\"value\":\"None\"}\n");
  EXPECT_EQ(outcome.status, 0);
}

TEST(DriveCommand, ClickGoesThroughThePlugin) {
  const auto answers = answersOf(drive({}, "click ePTKWPageMirrorImage\nget MirrorImage\nok\n"));
  ASSERT_THAT(answers, SizeIs(3));
  EXPECT_EQ(answers.at(1).at("value"), "MirrorImage");
  EXPECT_EQ(answers.at(2), json({{"ok", true}}));
}

TEST(DriveCommand, ModelAndItsFactsAreGiven) {
  EXPECT_EQ(answersOf(drive({"--model", "kvt"}, "get ModelNumber\n")).at(0).at("value"), "KVT");
  EXPECT_EQ(answersOf(drive({"--property", "ModelNumber=KVT", "--property", "OutputPDL=a=b"},
                            "get ModelNumber\nget OutputPDL\n"))
                .at(1)
                .at("value"),
            "a=b");
}

TEST(DriveCommand, ModeIsTheHostSettingUIMode) {
  for (const std::string mode : {"DocProp", "PDC", "PrePrint"})
    EXPECT_EQ(answersOf(drive({"--mode", mode}, "setting UIMode\n")).at(0).at("value"), mode);
  EXPECT_EQ(answersOf(drive({"--mode", "rootless"}, "setting UIMode\n")).at(0).at("value"), nullptr);
}

TEST(DriveCommand, InactivePluginLoadsNoTab) {
  EXPECT_EQ(drive({"--inactive"}, "widget ePTKWPageMirrorImage\n").status, 1);
  EXPECT_EQ(drive({"--inactive", "--mode", "PDC"}, "widget ePTKWPageMirrorImage\n").status, 0);
}

TEST(DriveCommand, ConfigSetsAndRemovesSettings) {
  const auto answers =
      answersOf(drive({"--config", "a.b=c=d", "--config", "kilnworks.pdlsettings.folder-", "--config", "empty="},
                      "setting a.b\nsetting kilnworks.pdlsettings.folder\nsetting empty\n"));
  EXPECT_EQ(answers.at(0).at("value"), "c=d");
  EXPECT_EQ(answers.at(1).at("value"), nullptr);
  EXPECT_EQ(answers.at(2).at("value"), "");
}

TEST(DriveCommand, CustomiseReachesThePlugin) {
  const auto answers = answersOf(drive({"--customise", "XMLCustomisation=true", "--customise", "A3LD180Degree=false"},
                                       "widget chk_EffRot180DegForA3LD\n"));
  EXPECT_EQ(answers.at(0).at("visible"), false);
  EXPECT_EQ(answers.at(0).at("enabled"), false);
}

TEST(DriveCommand, LocaleTranslatesWhatIsShown) {
  const auto english = answersOf(drive({}, "widget ePTKWPageMirrorImage\n")).at(0);
  const auto japanese = answersOf(drive({"--locale", "ja-JP"}, "widget ePTKWPageMirrorImage\n")).at(0);
  EXPECT_EQ(english.at("label"), japanese.at("label"));
  EXPECT_NE(english.at("shown"), japanese.at("shown"));
}

TEST(DriveCommand, WithoutLeavesWidgetsOut) {
  const auto answers = answersOf(drive({"--without", "chk_EffRot180DegForA3LD", "--without", "btn_WMAdd"},
                                       "widget chk_EffRot180DegForA3LD\nwidget btn_WMAdd\nwidget chk_EffRot180Deg\n"));
  EXPECT_EQ(answers.at(0).at("ok"), false);
  EXPECT_EQ(answers.at(1).at("ok"), false);
  EXPECT_EQ(answers.at(2).at("ok"), true);
}

TEST(CommandLine, MisspeltWordsAreAskedAbout) {
  expectRefusal(runKiln({"drvie"}), {"Did you mean \"drive\"?"});
  expectRefusal(runKiln({"help", "tickt"}), {"There is no command \"tickt\"", "Did you mean \"ticket\"?"});
  expectRefusal(runKiln({"overlay", "lsit"}), {"Did you mean \"list\"?"});
  expectRefusal(runKiln({"ticket", "--modl", "kvt"}), {"Did you mean \"--model\"?"});
  expectRefusal(runKiln({"ticket", "--model", "kvtt"}), {"There is no model kvtt", "Did you mean \"kvt\"?"});
}

TEST(CommandLine, WordsLikeNoOtherAreNotAskedAbout) {
  EXPECT_THAT(runKiln({"photocopy"}).err, testing::Not(testing::HasSubstr("Did you mean")));
}

TEST(DriveCommand, FontsMayBeUnknown) { EXPECT_EQ(drive({"--fonts", "-"}, "get MirrorImage\n").status, 0); }

TEST(DriveCommand, JobStepIsInForceFromTheOpeningOn) {
  const std::string script = "click btn_job\nget OverlayImageName\n";
  EXPECT_EQ(answersOf(drive(withFake({"--job-step", "Letter head"}), script)).at(1).at("value"), "Letter head");
  EXPECT_EQ(answersOf(drive(withFake({"--job-step", "-"}), script)).at(1).at("value"), "");
}

TEST(DriveCommand, TraceFileHoldsTheOpening) {
  const auto trace = testFolder() / "trace.jsonl";
  EXPECT_EQ(drive({"--trace", trace.string()}, "").status, 0);
  EXPECT_THAT(readFile(trace), HasSubstr("{\"op\":\"load\",\"url\":\"chrome://effect/content/tab_effect.xul\"}\n"));
}

TEST(DriveCommand, TicketGoesOutAndComesBack) {
  const std::string set = "set MirrorImage MirrorImage\nticket\n";
  const std::string xml = answersOf(drive({}, set)).at(1).at("xml");
  EXPECT_THAT(xml, AllOf(HasSubstr("PrintTicket"), HasSubstr("PageMirrorImage")));
  const auto file = testFolder() / "ticket.xml";
  writeFile(file, xml);
  const auto answers =
      answersOf(drive({}, "load-ticket \"" + file.generic_string() + "\"\nget MirrorImage\nok\nticket\n"));
  ASSERT_THAT(answers, SizeIs(4));
  EXPECT_EQ(answers.at(1).at("value"), "MirrorImage");
  EXPECT_EQ(answers.at(3).at("xml"), xml);
}

TEST(DriveCommand, TicketThatCannotBeReadIsRefused) {
  const auto file = testFolder() / "broken.xml";
  writeFile(file, "<PrintTicket>");
  const auto answers =
      answersOf(drive({}, "load-ticket \"" + file.generic_string() + "\"\nload-ticket /no/such/file\nload-ticket /\n"));
  ASSERT_THAT(answers, SizeIs(3));
  EXPECT_THAT(answers.at(0).at("error"), HasSubstr(file.generic_string() + ":1"));
  EXPECT_THAT(answers.at(1).at("error"), HasSubstr("/no/such/file"));
  EXPECT_EQ(answers.at(2).at("ok"), false);
}

TEST(DriveCommand, SchemaIsThePluginsOwn) {
  const auto answers = answersOf(drive({}, "schema\n"));
  EXPECT_THAT(answers.at(0).at("xml"), HasSubstr("PageMirrorImage"));
}

TEST(DriveCommand, HomeKeepsItsFolders) {
  const auto home = testFolder() / "home";
  EXPECT_EQ(answersOf(drive({"--home", home.string()}, "setting kilnworks.user.path\n")).at(0).at("value"),
            (home / "user").generic_string());
  EXPECT_TRUE(std::filesystem::is_directory(home / "profile"));
}

TEST(DriveCommand, TemporaryHomeLeavesNothingBehind) {
  const auto folder = testFolder() / "tmp";
  std::filesystem::create_directories(folder);
  EXPECT_EQ(runKiln({"drive"}, "reload\n", {"TMPDIR=" + folder.string(), "TMP=" + folder.string()}).status, 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

}  // namespace
