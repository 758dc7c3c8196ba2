// Several overlays from the tab to the properties and back, by scripts with the built plug-in.
#include "tests/overlay/overlay_home.h"
#include "tests/overlay/thumbnails.h"
#include "tests/support/scripted_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string dialogUrl = "chrome://effect/content/dlg_multipleoverlay.xul";
const std::string letterAndStamp = "00001.opa;All$;$00002.opa;2,5-9$;$;$;$;$;$";

class MultiScript : public testing::Test {
 protected:
  MultiScript() {
    home.putUser({{u"Letterhead", u"00001.opa"}, {u"Stamp", u"00002.opa"}});
    Testing::writeFile(path("00001.bmp"), bitmap(1, 1));
  }

  // The answers to the script's lines.
  std::vector<json> run(const std::string& script, const std::string& details = "") const {
    Script::Request request;
    request.preferences = Testing::builtOptions();
    request.preferences.home = home.folder.path;
    if (!details.empty())
      request.preferences.properties = {{u"OverlayImage", u"MultipleOverlayImage"},
                                        {u"OverlaySel", u"Multiple"},
                                        {u"MultipleOverlayDetails", Formats::toUtf16(details)}};
    const std::vector<json> answers = runScript(script, request).answers;
    for (const json& answer : answers) EXPECT_TRUE(answer["ok"]) << answer;
    return answers;
  }

  std::string path(const std::string& file) const { return (home.userFolder() / file).generic_string(); }

  OverlayHome home;
};

using Pairs = std::vector<std::pair<std::string, std::string>>;

// The pairs of each transition in the answer to "trace".
std::vector<Pairs> transitions(const json& answer) {
  std::vector<Pairs> all;
  for (const json& event : answer["events"])
    if (event["op"] == "transition") all.push_back(event["pairs"].get<Pairs>());
  return all;
}

TEST_F(MultiScript, ChoosingMultipleOpensTheDialogAtOnce) {
  const auto answers = run("trace\nselect cmb_EffOverlay Multiple\ntrace\ndialogs");
  EXPECT_EQ(answers[1]["modal"], dialogUrl);
  EXPECT_EQ(transitions(answers[2]).front(),
            (Pairs{{"OverlaySel", "Multiple"}, {"OverlayImage", "MultipleOverlayImage"}}));
  EXPECT_EQ(answers[3]["open"], json::array({dialogUrl}));
}

TEST_F(MultiScript, CancellingAtTheFirstTimeReturnsToNone) {
  const auto answers = run(
      "select cmb_EffOverlay Multiple\ntrace\ncancel\ntrace\nget OverlaySel\nget OverlayImage\nwidget cmb_EffOverlay");
  EXPECT_EQ(transitions(answers[3]).front(), (Pairs{{"OverlaySel", "None"}, {"OverlayImage", "None"}}));
  EXPECT_EQ(answers[4]["value"], "None");
  EXPECT_EQ(answers[5]["value"], "None");
  EXPECT_EQ(answers[6]["selected"], 0);
}

TEST_F(MultiScript, CancellingLaterChangesNothing) {
  const auto answers = run(
      "trace\nproperties\nclick but_EffDet\nmenu img_MulOvl1Image clear\ncancel\ntrace\nproperties", letterAndStamp);
  EXPECT_EQ(answers[2]["modal"], dialogUrl);
  EXPECT_THAT(transitions(answers[5]), IsEmpty());
  EXPECT_EQ(answers[6]["properties"], answers[1]["properties"]);
}

TEST_F(MultiScript, AcceptingSetsFourPropertiesInOneTransition) {
  const auto answers = run(R"(select cmb_EffOverlay Multiple
menu img_MulOvl1Image clear
drop lib_MulOvlSource 00001.opa img_MulOvl1Image
select lib_MulOvlSource 00002.opa
click btn_MulOvlAddManual
type edt_MulOvl3Manual 2,5-9
trace
ok
trace
widget cmb_EffOverlay
get OverlaySourceFileName)");
  const auto native = [this](const char* file) { return std::filesystem::path(path(file)).make_preferred().string(); };
  const std::string files = native("00001.opa") + ";All$" + native("00002.opa") + ";2,5-9$";
  EXPECT_EQ(transitions(answers[8]).front(), (Pairs{{"OverlaySel", "Multiple"},
                                                    {"OverlayImage", "MultipleOverlayImage"},
                                                    {"OverlaySourceFileName", files},
                                                    {"MultipleOverlayDetails", letterAndStamp}}));
  EXPECT_EQ(answers[9]["selected"], 1);
  EXPECT_EQ(answers[10]["value"], files);
}

TEST_F(MultiScript, OpensAgainOnWhatWasAccepted) {
  const auto answers = run(R"(select cmb_EffOverlay Multiple
click rad1_Odd
drop lib_MulOvlSource 00002.opa img_MulOvl2Image
drop lib_MulOvlSource 00001.opa img_MulOvl8Image
type edt_MulOvl8Manual 1-3
ok
click but_EffDet
widget rad1_Odd
widget rad2_Even
widget edt_MulOvl8Manual
widget img_MulOvl8Image
widget img_MulOvl3Image)");
  EXPECT_EQ(answers[7]["checked"], true);
  EXPECT_EQ(answers[8]["checked"], true);
  EXPECT_EQ(answers[9]["text"], "1-3");
  EXPECT_EQ(answers[10]["image"], path("00001.bmp"));
  EXPECT_EQ(answers[11]["image"], "BlankBitmap");
}

TEST_F(MultiScript, RefusesOtherCharactersAsPages) {
  const auto answers = run(R"(select cmb_EffOverlay Multiple
type edt_MulOvl3Manual 1-3,5
type edt_MulOvl3Manual 1;2
type edt_MulOvl3Manual all
type edt_MulOvl3Manual "")");
  EXPECT_EQ(answers[1]["accepted"], true);
  EXPECT_EQ(answers[2]["accepted"], false);
  EXPECT_EQ(answers[3]["accepted"], false);
  EXPECT_EQ(answers[3]["text"], "1-3,5");
  EXPECT_EQ(answers[4]["accepted"], true);
}

TEST_F(MultiScript, TellsTheHelpTopic) {
  const auto answers = run("select cmb_EffOverlay Multiple\ntrace\nclick btn_MulOvlHelp\ntrace");
  EXPECT_THAT(answers[3]["events"], ElementsAre(json{{"op", "show-help"}, {"context", "5100"}}));
}

}  // namespace
