// Overlays in the drive script, as used by driver teams.
#include "overlay_home.h"
#include "tests/support/scripted_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

class OverlayScript : public testing::Test {
 protected:
  OverlayScript() {
    request.preferences = Testing::builtOptions();
    request.preferences.home = home.folder.path;
    Testing::writeFile(home.folder.path / "job", "captured");
  }

  void printAsOverlay(const std::u16string& name) {
    request.preferences.properties = {{u"PrintJob", u"Overlay"}};
    request.jobStep = name;
  }
  std::string job() const { return "write-job '" + (home.folder.path / "job").generic_string() + "'\n"; }
  std::vector<json> run(const std::string& script) {
    const auto scripted = runScript(script, request);
    status = scripted.status;
    return scripted.answers;
  }

  OverlayHome home;
  Script::Request request;
  int status = -1;
};

// "SHOWN=VALUE" of each item of an answer.
std::vector<std::string> items(const json& answer) {
  std::vector<std::string> lines;
  for (const auto& item : answer.at("items"))
    lines.push_back(item.at("shown").get<std::string>() + "=" + item.at("value").get<std::string>());
  return lines;
}

TEST_F(OverlayScript, MayAskForAnOverlayAfterThePreferencesAreClosed) {
  printAsOverlay(u"Nice");
  const std::string create = "set OverlayImageCreate On\n";
  const auto answers = run(create + job() + "cancel\n" + create + "ok\nget OvlDestCreated\n");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(answers.at(3).at("modal"), "chrome://base/content/dlg_overwrite.xul");
  EXPECT_EQ(answers.at(5).at("value"), "True");
  run("cancel\n" + create);
  EXPECT_EQ(status, 0);
}

TEST_F(OverlayScript, PrintsAFormOnceAndPrintsOnItFromThenOn) {
  printAsOverlay(u"Letterhead");
  const auto created = run("ok\nget OverlayDestFileName\n" + job());
  EXPECT_EQ(status, 0);
  const std::filesystem::path file = created.at(1).at("value").get<std::string>();
  EXPECT_EQ(bytesOf(file), "captured");

  request.preferences.properties.clear();
  const std::string name = file.filename().string();
  const auto chosen = run("widget cmb_EffOverlay\nselect cmb_EffOverlay " + name +
                          "\nclick ePTKWJobOverlayImage_Layering\nget OverlaySourceFileName\nget OverlayImage\n"
                          "get OverlayLayering\nget OverlayName\nok\nget OverlayDestFileName\n");
  EXPECT_EQ(status, 0);
  EXPECT_THAT(items(chosen.at(0)), ElementsAre("None=None", "Multiple=Multiple", "Letterhead=" + name));
  EXPECT_EQ(inSlashes(chosen.at(3).at("value")), file.generic_string());
  EXPECT_EQ(chosen.at(4).at("value"), "OverlayImage");
  EXPECT_EQ(chosen.at(5).at("value"), "Overlay");
  EXPECT_EQ(chosen.at(6).at("value"), "Letterhead");
  EXPECT_EQ(chosen.at(8).at("value"), "");

  const auto deleted = run("select cmb_EffOverlay " + name + "\nclick btn_OvlDel\nok\nwidget cmb_EffOverlay\ntrace\n");
  EXPECT_EQ(deleted.at(1).at("modal"), "chrome://base/content/dlg_confirmdelete.xul");
  EXPECT_THAT(items(deleted.at(3)), ElementsAre("None=None", "Multiple=Multiple"));
  EXPECT_EQ(home.userIndex(), "");
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(OverlayScript, ShowsTheFullDialogAndRefusesOK) {
  home.putUser(OverlayHome::forms(20));
  printAsOverlay(u"one more");
  const auto answers = run("ok\ndialogs\nok\nget OvlDestCreated\n");
  EXPECT_EQ(answers.at(0).at("modal"), "chrome://effect/content/dlg_overlayfull.xul");
  EXPECT_THAT(answers.at(1).at("open"), ElementsAre("chrome://effect/content/dlg_overlayfull.xul"));
  EXPECT_EQ(answers.at(2).at("vetoed"), true);
  EXPECT_EQ(answers.at(3).at("value"), "False");
}

TEST_F(OverlayScript, AsksBeforeItReplaces) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  printAsOverlay(u"Letterhead");
  const auto kept = run("ok\ncancel\nget OverlayImageName\n");
  EXPECT_EQ(kept.at(0).at("modal"), "chrome://base/content/dlg_overwrite.xul");
  EXPECT_EQ(kept.at(1).at("vetoed"), true);
  EXPECT_EQ(kept.at(2).at("value"), "");
  const auto replaced = run("ok\nok\nget OverlayImageName\n" + job());
  EXPECT_EQ(replaced.at(1), json({{"ok", true}}));
  EXPECT_EQ(replaced.at(2).at("value"), "Letterhead");
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "captured");
}

TEST_F(OverlayScript, PutsBackTheOldOverlayOfAJobThatWasNeverWritten) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  printAsOverlay(u"Letterhead");
  const auto answers = run("ok\nok\nreload\nwidget cmb_EffOverlay\n");
  EXPECT_THAT(items(answers.at(3)), ElementsAre("None=None", "Multiple=Multiple", "Letterhead=00001.opa"));
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "00001.opa");
}

TEST_F(OverlayScript, CancelsTheJobAtPrintTime) {
  request.preferences.mode = Refhost::Mode::prePrint;
  request.preferences.properties = {{u"PrintJob", u"Overlay"}};
  const auto answers = run("get CancelJob\ntrace\n");
  EXPECT_EQ(answers.at(0).at("value"), "True");
  EXPECT_THAT(answers.at(1).dump(), HasSubstr(R"({"op":"cancel-job"})"));
}

TEST_F(OverlayScript, WritesNoJobWithoutADestination) {
  const auto answers = run(job() + "set OverlayDestFileName x\nwrite-job /none/job\n");
  EXPECT_THAT(answers.at(0).at("error"), HasSubstr("OverlayDestFileName is empty"));
  EXPECT_THAT(answers.at(2).at("error"), HasSubstr("cannot be read"));
}

TEST_F(OverlayScript, WritesTheJobAfterThePreferencesWereClosed) {
  const auto file = (home.folder.path / "x.opa").generic_string();
  const auto answers = run("set OverlayDestFileName '" + file + "'\ncancel\n" + job());
  EXPECT_EQ(answers.at(2), json({{"ok", true}}));
  EXPECT_EQ(bytesOf(file), "captured");
}

TEST_F(OverlayScript, TellsAThumbnailThatIsOne) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  const auto none = run("select cmb_EffOverlay 00001.opa\nwidget img_EffOverlay\n");
  EXPECT_EQ(none.at(1).at("image"), nullptr) << "a thumbnail that is no bitmap";
}

}  // namespace
