// Replaying recordings with the built command: kiln drive --expect.
#include "tests/script/usage.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <regex>
#include <sstream>

namespace {

using nlohmann::json;
using testing::HasSubstr;

// The script with the answers that a run of it gives.
std::string recorded(const std::string& script, std::vector<std::string> words = {}) {
  words.insert(words.begin(), "drive");
  std::istringstream answers(runKiln(words, script).out);
  std::istringstream commands(script);
  std::string lines;
  for (std::string command, answer; std::getline(commands, command) && std::getline(answers, answer);)
    lines += command + "\n#= " + answer + '\n';
  return lines;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

class ReplayCommand : public testing::Test {
 protected:
  Outcome expect(const std::string& recording, std::vector<std::string> words = {}) {
    const auto file = folder / "session.drive";
    writeFile(file, recording);
    words.insert(words.begin(), {"drive", "--expect", file.string()});
    return runKiln(words, "never read\n");
  }

  const std::filesystem::path folder = testFolder();
};

const std::string session = "click ePTKWPageMirrorImage\n"
                            "get MirrorImage\n"
                            "undo\n"
                            "get MirrorImage\n"
                            "ok\n";

TEST_F(ReplayCommand, SaysThatAllAnswersAreAsRecorded) {
  const auto outcome = expect(recorded(session));
  EXPECT_EQ(outcome.out, "All 5 answers are as recorded.\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ReplayCommand, NamesTheFirstDifferenceAndEndsThere) {
  std::string recording = recorded(session);
  recording.replace(recording.find("\"value\":\"MirrorImage\""), 21, "\"value\":\"Another\"");
  recording.replace(recording.find("\"value\":\"None\""), 14, "\"value\":\"Third\"");
  const auto outcome = expect(recording);
  const std::string file = (folder / "session.drive").string();
  EXPECT_EQ(outcome.out, file + ":3: get MirrorImage\n" +
                             "expected: {\"ok\":true,\"value\":\"Another\"}\n"
                             "got:      {\"ok\":true,\"value\":\"MirrorImage\"}\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(ReplayCommand, RunsAScriptThatDriveRunsToo) {
  const std::string recording = "#: model kvt\n" + recorded(session);
  std::string answers;
  std::istringstream lines(recorded(session));
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with("#= ")) answers += line.substr(3) + '\n';
  const auto outcome = runKiln({"drive"}, recording);
  EXPECT_EQ(outcome.out, answers);
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ReplayCommand, ReadsStandardInputToo) {
  EXPECT_EQ(runKiln({"drive", "--expect"}, recorded("get MirrorImage\n")).out, "The answer is as recorded.\n");
}

TEST_F(ReplayCommand, OpensWithTheRecordedFacts) {
  const std::string recording = "#: kiln 0.9\n"
                                "#: model kvt\n"
                                "#: mode PDC\n"
                                "#: locale de-DE\n"
                                "#: property MirrorImage=MirrorImage\n"
                                "#: property \"OverlayImageName={home}/a b\"\n"
                                "#: config a.b=c\n"
                                "#: fonts Alpha,Beta\n"
                                "get ModelNumber\n#= {\"ok\":true,\"value\":\"KVT\"}\n"
                                "setting UIMode\n#= {\"ok\":true,\"value\":\"PDC\"}\n"
                                "get MirrorImage\n#= {\"ok\":true,\"value\":\"MirrorImage\"}\n"
                                "get OverlayImageName\n#= {\"ok\":true,\"value\":\"{home}/a b\"}\n"
                                "setting a.b\n#= {\"ok\":true,\"value\":\"c\"}\n"
                                "widget ePTKWPageMirrorImage\n#= {\"ok\":true,\"shown\":\"Spiegelbild\"}\n";
  const auto outcome = expect(recording);
  EXPECT_EQ(outcome.out, "All 6 answers are as recorded.\n");
}

TEST_F(ReplayCommand, OpensWithTheOptionsThatAreGiven) {
  const std::string recording = "#: model kvt\n#: property MirrorImage=MirrorImage\n"
                                "get ModelNumber\n#= {\"ok\":true,\"value\":\"\"}\n"
                                "get MirrorImage\n#= {\"ok\":true,\"value\":\"None\"}\n";
  EXPECT_EQ(expect(recording).status, 1);
  EXPECT_EQ(expect(recording, {"--model", "standard", "--property", "MirrorImage=None"}).status, 0);
}

TEST_F(ReplayCommand, TakesAnswersInAnyOrderOfMembersAndWithoutThoseOfTheCommand) {
  EXPECT_EQ(
      expect("type nothing x\n#= {\"error\":\"There is no widget \\\"nothing\\\" in the preferences.\",\"ok\":false}\n"
             "get MirrorImage\n#= {\"ok\":true}\n")
          .status,
      0);
}

TEST_F(ReplayCommand, TellsADialogThatWasNotRecorded) {
  const auto outcome = expect("click btn_WMAdd\n#= {\"ok\":true}\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, HasSubstr("\"modal\":\"chrome://effect/content/dlg_watermark.xul\""));
}

TEST_F(ReplayCommand, LeavesCommandsWithoutAnswersAlone) {
  EXPECT_EQ(expect("get MirrorImage\n#= {\"ok\":true}\nno-such-command\n").status, 0);
}

// The id of a watermark, the name of an overlay's file, and the home.
TEST_F(ReplayCommand, TakesNoNoticeOfWhatIsOfOneRunAlone) {
  const std::string script = "click btn_WMAdd\n"
                             "type txt_EffWMTxtBox Mine\n"
                             "ok\n"
                             "widget lst_selectedWatermark\n"
                             "job-step Letterhead\n"
                             "print-overlay\n"
                             "select-index cmb_EffOverlay 2\n"
                             "rename-overlay Stationery\n"
                             "properties\n"
                             "setting kilnworks.user.path\n"
                             "trace\n";
  const std::string recording = recorded(script);
  EXPECT_TRUE(std::regex_search(recording, std::regex("WM_[0-9A-F]+_"))) << recording;
  EXPECT_TRUE(std::regex_search(recording, std::regex("[0-9]+\\.opa"))) << recording;
  std::istringstream lines(recording);
  std::string user;
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with("#= {\"ok\":true,\"value\"")) user = json::parse(line.substr(3)).at("value");
  const std::string home = user.substr(0, user.rfind('/'));
  std::string portable = replaced(recording, home, "{home}");
  portable = replaced(portable, replaced(home, "/", "\\\\"), "{home}");  // as Windows writes it in JSON
  const auto outcome = expect(portable);
  EXPECT_EQ(outcome.out, "All 11 answers are as recorded.\n");
}

TEST_F(ReplayCommand, TellsTwoMadeUpNamesApart) {
  const auto value = [](const std::string& id) { return "#= {\"ok\":true,\"value\":\"" + id + "\"}\n"; };
  const std::string get = "get OverlayName\n";
  const std::string set = "set OverlayName ";
  EXPECT_EQ(expect(set + "WM_A_1\n" + get + value("WM_B_1") + set + "WM_A_2\n" + get + value("WM_B_2")).status, 0);
  EXPECT_EQ(expect(set + "WM_A_1\n" + get + value("WM_B_1") + set + "WM_A_2\n" + get + value("WM_B_1")).status, 1);
}

TEST_F(ReplayCommand, AsksForTheHomeOfTheRecordingWhenItDiffers) {
  const std::string recording =
      "#: home-held \"1 watermark, 0 overlays\"\nselect-index lst_selectedWatermark 6\n#= {\"ok\":true}\n";
  EXPECT_THAT(expect(recording).out, HasSubstr("1 watermark, 0 overlays: replay it with a copy of that home"));
  EXPECT_THAT(expect(recording, {"--home", (folder / "home").string()}).out, testing::Not(HasSubstr("a copy")));
}

TEST_F(ReplayCommand, RefusesWhatIsNoRecording) {
  expectRefusal(expect("get MirrorImage\n"), {"session.drive has no answers to compare with"});
  expectRefusal(expect("get MirrorImage\n#= yes\n"), {"session.drive:2", "not a JSON object"});
  expectRefusal(expect("#= {\"ok\":true}\n"), {"session.drive:1", "belongs to no command"});
  expectRefusal(expect("get A\n#= {}\n#= {}\n"), {"session.drive:3", "belongs to no command"});
  expectRefusal(expect("#: a b c\nget A\n#= {}\n"), {"session.drive:1", "A fact"});
  expectRefusal(expect("#: mode None\nget A\n#= {}\n"), {"no mode"});
  expectRefusal(expect("#: dpi many\nget A\n#= {}\n"), {"pixels"});
}

}  // namespace
