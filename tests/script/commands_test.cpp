// The effect and the answer of each command.
#include "script/json.h"
#include "tests/script/scripted.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

using nlohmann::json;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::SizeIs;

const json done = {{"ok", true}};

json answer(const std::string& command) { return runScript(command + "\n").answers.at(0); }

TEST(ScriptCommands, EachCommandHasOneAnswerAndCommentsHaveNone) {
  const auto run = runScript("\n# note\nget Colour\r\n   \nno-such-command\nget Colour");
  ASSERT_THAT(run.answers, SizeIs(3));
  EXPECT_EQ(run.answers.at(0), json({{"ok", true}, {"value", "Black"}}));
  EXPECT_EQ(run.answers.at(1).at("ok"), false);
  EXPECT_EQ(run.answers.at(2).at("value"), "Black");
  EXPECT_EQ(run.status, 1);
}

TEST(ScriptCommands, EmptyScriptEndsWell) {
  EXPECT_EQ(runScript("").status, 0);
  EXPECT_THAT(runScript("").answers, SizeIs(0));
}

TEST(ScriptCommands, UnbalancedQuoteIsRefused) {
  EXPECT_EQ(answer("set Colour \"Red").at("ok"), false);
  EXPECT_EQ(answer("''").at("ok"), false);
}

TEST(ScriptCommands, LineThatIsNoUtf8IsRefused) { EXPECT_EQ(answer("set OverlayImageName a\xFF").at("ok"), false); }

TEST(ScriptCommands, LineThatIsTooLongIsRefusedAndTheNextIsNot) {
  constexpr std::size_t most = 1 << 20;
  const std::string start = "set OverlayImageName ";
  const std::string longest = start + std::string(most - start.size(), 'x');
  const auto result = runScript(longest + '\n' + longest + "y\n" + start + "z\nget OverlayImageName\n");
  ASSERT_EQ(result.answers.size(), 4u);
  EXPECT_EQ(result.answers[0].at("ok"), true);
  EXPECT_EQ(result.answers[1].at("error"), "The line is longer than 1048576 bytes.");
  EXPECT_EQ(result.answers[3].at("value"), "z");
}

// Gives one line, and then fails to read on.
class FailingInput final : public std::streambuf {
 public:
  FailingInput() { setg(line, line, line + sizeof line - 1); }
  int_type underflow() override { throw std::runtime_error("the device is gone"); }

 private:
  char line[21] = "get OverlayImageName";
};

TEST(ScriptCommands, InputThatCannotBeReadIsNoEndOfTheScript) {
  FailingInput input;
  std::istream commands(&input);
  std::ostringstream answers;
  EXPECT_THROW(Script::run(fakeRequest(), commands, answers), std::runtime_error);
}

TEST(ScriptCommands, WrongNumberOfWordsTellsTheUsage) {
  EXPECT_THAT(answer("select cmb_colour").at("error"), HasSubstr("select ID VALUE"));
  EXPECT_THAT(answer("ok now").at("error"), HasSubstr("used as: ok"));
  EXPECT_EQ(answer("get").at("ok"), false);
}

TEST(ScriptCommands, ClickTogglesACheckBox) {
  const auto run = runScript("click chk_ask\nwidget chk_ask\nclick chk_ask\nwidget chk_ask\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("checked"), true);
  EXPECT_EQ(run.answers.at(3).at("checked"), false);
}

TEST(ScriptCommands, WidgetThatAUserCouldNotOperateIsRefused) {
  const auto run = runScript("click chk_disabled\nclick chk_hidden\nwidget chk_disabled\nwidget chk_hidden\n");
  EXPECT_THAT(run.answers.at(0).at("error"), HasSubstr("disabled"));
  EXPECT_THAT(run.answers.at(1).at("error"), HasSubstr("hidden"));
  EXPECT_EQ(run.answers.at(2), json({{"ok", true},
                                     {"kind", "checkbox"},
                                     {"visible", true},
                                     {"enabled", false},
                                     {"label", "Disabled"},
                                     {"shown", "Disabled"},
                                     {"checked", false}}));
  EXPECT_EQ(run.answers.at(3).at("visible"), false);
  EXPECT_EQ(run.answers.at(3).at("enabled"), true);
}

TEST(ScriptCommands, TypingTellsWhetherTheEditIsTakenAndWhatTheBoxHolds) {
  const auto run =
      runScript("type txt_name new\ntype txt_name no\ntype txt_name throw\ntype txt_name abcdefg\nwidget txt_name\n");
  EXPECT_EQ(run.answers.at(0), json({{"ok", true}, {"accepted", true}, {"text", "new"}}));
  EXPECT_EQ(run.answers.at(1), json({{"ok", true}, {"accepted", false}, {"text", "new"}}));
  EXPECT_THAT(run.answers.at(2).at("error"), HasSubstr("thrown while typing"));
  EXPECT_EQ(run.answers.at(3).at("text"), "abcde");
  EXPECT_EQ(run.answers.at(4), json({{"ok", true},
                                     {"kind", "textbox"},
                                     {"visible", true},
                                     {"enabled", true},
                                     {"text", "abcde"},
                                     {"maxLength", 5}}));
}

TEST(ScriptCommands, BlurTellsWhatTheBoxThenHolds) {
  EXPECT_EQ(answer("blur txt_name"), json({{"ok", true}, {"text", "left"}}));
}

TEST(ScriptCommands, ScrollMovesTheBarWithinItsRange) {
  const auto run =
      runScript("scroll scr_angle 180\nwidget scr_angle\nwidget lbl_log\nscroll scr_angle 181\nscroll scr_angle x\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("position"), 180);
  EXPECT_EQ(run.answers.at(2).at("label"), "end");
  EXPECT_THAT(run.answers.at(3).at("error"), HasSubstr("0 to 180"));
  EXPECT_EQ(run.answers.at(4).at("ok"), false);
}

TEST(ScriptCommands, PickChoosesAColour) {
  const auto run = runScript("pick pic_colour #FF0080\nwidget lbl_log\npick pic_colour red\npick pic_colour #12345G\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("label"), "pink");
  EXPECT_EQ(run.answers.at(2).at("ok"), false);
  EXPECT_EQ(run.answers.at(3).at("ok"), false);
}

TEST(ScriptCommands, ClickChoosesARadioButton) {
  const auto run = runScript("click rad_two\nwidget rad_one\nwidget rad_two\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("checked"), false);
  EXPECT_EQ(run.answers.at(2).at("checked"), true);
  EXPECT_EQ(run.answers.at(2).at("kind"), "radio");
}

TEST(ScriptCommands, DropAndMenuReachAPicture) {
  const auto run = runScript("drop lst_source Red img_slot\nwidget lbl_log\nmenu img_slot clear\nwidget lbl_log\ndrop "
                             "lst_source Pink img_slot\n"
                             "drop lst_source Red img_none\nmenu img_slot \"Clear it\"\nmenu img_none clear\n");
  EXPECT_EQ(run.answers.at(1).at("label"), "Red");
  EXPECT_EQ(run.answers.at(3).at("label"), "clear");
  for (std::size_t i = 4; i < 8; ++i) EXPECT_EQ(run.answers.at(i).at("ok"), false) << i;
}

TEST(ScriptCommands, DropFromAWidgetThatCannotBeDraggedIsRefused) {
  for (const char* source : {"lst_fixed", "cmb_colour"}) {
    const auto run = runScript("drop " + std::string(source) + " Red img_slot\nwidget lbl_log\n");
    EXPECT_THAT(run.answers.at(0).at("error"), HasSubstr(std::string(source) + "\" cannot have items dragged from it"));
    EXPECT_EQ(run.answers.at(1).at("label"), "");
  }
}

TEST(ScriptCommands, UnknownWidgetIsRefused) {
  EXPECT_THAT(answer("click chk_none").at("error"), HasSubstr("\"chk_none\""));
  EXPECT_EQ(answer("widget chk_none").at("ok"), false);
}

TEST(ScriptCommands, CommandThatTheKindCannotDoIsRefused) {
  for (const char* command : {"click lbl_log", "select chk_ask x", "select-index btn_modal 0", "type lbl_log x",
                              "blur chk_ask", "scroll chk_ask 1", "pick chk_ask #FF0000", "menu chk_ask x",
                              "drop lst_source Red lbl_log", "drop chk_ask Red lbl_log"})
    EXPECT_THAT(answer(command).at("error"), HasSubstr("cannot")) << command;
}

TEST(ScriptCommands, LabelIsReadAsWrittenAndAsTranslated) {
  const json widget = answer("widget chk_veto");
  EXPECT_EQ(widget.at("label"), "$IDS_VETO;");
  EXPECT_EQ(widget.at("shown"), "Refuse");
}

TEST(ScriptCommands, ItemsAreReadWhole) {
  const json widget = answer("widget cmb_colour");
  EXPECT_EQ(widget.at("kind"), "combobox");
  EXPECT_EQ(widget.at("selected"), 0);
  ASSERT_THAT(widget.at("items"), SizeIs(2));
  EXPECT_EQ(widget.at("items").at(0), json({{"text", "$IDS_BLACK;"},
                                            {"shown", "Pitch black"},
                                            {"value", "Black"},
                                            {"colour", nullptr},
                                            {"icon", false},
                                            {"side", nullptr},
                                            {"mark", false},
                                            {"flag", false}}));
}

TEST(ScriptCommands, ImageThatShowsNothingIsNull) {
  const json widget = answer("widget img_none");
  EXPECT_EQ(widget.at("kind"), "image");
  EXPECT_EQ(widget.at("image"), nullptr);
}

TEST(ScriptCommands, SelectChoosesByValueAndByPosition) {
  const auto run =
      runScript("select cmb_colour Red\nget Colour\nselect-index cmb_colour 0\nget Colour\nselect cmb_colour Green\n"
                "select-index cmb_colour 2\nselect-index cmb_colour -1\nselect-index cmb_colour x\nget Colour\n");
  ASSERT_THAT(run.answers, SizeIs(9));
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("value"), "Red");
  EXPECT_EQ(run.answers.at(2), done);
  EXPECT_EQ(run.answers.at(3).at("value"), "Black");
  for (std::size_t i = 4; i < 8; ++i) EXPECT_EQ(run.answers.at(i).at("ok"), false) << i;
  EXPECT_EQ(run.answers.at(8).at("value"), "Black");
}

TEST(ScriptCommands, SetGivesAPropertyAValue) {
  const auto run = runScript("set Colour Red\nget Colour\nset None x\nget None\nproperties\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("value"), "Red");
  EXPECT_EQ(run.answers.at(2).at("ok"), false);
  EXPECT_EQ(run.answers.at(3).at("ok"), false);
  EXPECT_EQ(run.answers.at(4).at("properties"),
            json({{"ModelNumber", "F1"}, {"Colour", "Red"}, {"OverlayImageName", ""}, {"CancelJob", "False"}}));
}

TEST(ScriptCommands, ForbidAndAllowAreSignalledAndTraced) {
  const auto run = runScript("trace\nforbid Colour Red\nallow Colour Red\ntrace\nforbid Colour Green\nallow None x\n");
  ASSERT_THAT(run.answers, SizeIs(6));
  EXPECT_EQ(
      run.answers.at(3).at("events"),
      json({{{"op", "signal"}, {"signal", "enable-change"}, {"of", "Colour"}, {"option", "Red"}, {"enabled", false}},
            {{"op", "signal"}, {"signal", "enable-change"}, {"of", "Colour"}, {"option", "Red"}, {"enabled", true}}}));
  EXPECT_THAT(run.answers.at(4).at("error"), HasSubstr("no option \"Green\""));
  EXPECT_EQ(run.answers.at(5).at("ok"), false);
}

TEST(ScriptCommands, LockTakesAnyNumberOfNames) {
  const auto run = runScript("lock A B\nlock\n");
  EXPECT_THAT(run.answers, Each(done));
}

TEST(ScriptCommands, JobStepIsWhatTheHostAnswers) {
  const auto run = runScript("job-step \"Letter head\"\nclick btn_job\nget OverlayImageName\njob-step -\nclick "
                             "btn_job\nget OverlayImageName\n");
  EXPECT_EQ(run.answers.at(2).at("value"), "Letter head");
  EXPECT_EQ(run.answers.at(5).at("value"), "Letter head");
}

TEST(ScriptCommands, JobStepMayBeInForceFromTheOpeningOn) {
  Script::Request request = fakeRequest();
  request.jobStep = u"Form";
  EXPECT_EQ(runScript("click btn_job\nget OverlayImageName\n", request).answers.at(1).at("value"), "Form");
}

TEST(ScriptCommands, SettingIsTheValueOrNull) {
  Script::Request request = fakeRequest();
  request.preferences.settings = {{u"a.b", u"c"}, {u"UIMode", std::nullopt}};
  const auto run = runScript("setting a.b\nsetting UIMode\nsetting kilnworks.pdlsettings.folder\n", request);
  EXPECT_EQ(run.answers.at(0), json({{"ok", true}, {"value", "c"}}));
  EXPECT_EQ(run.answers.at(1), json({{"ok", true}, {"value", nullptr}}));
  EXPECT_EQ(run.answers.at(2).at("value"), "overlays");
}

TEST(ScriptCommands, TabIsOneOfTheLoadedOnes) {
  const auto run = runScript("tab pro_tab_device\ntab pro_tab_effect\ntab pro_tab_none\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1), done);
  EXPECT_THAT(run.answers.at(2).at("error"), HasSubstr("pro_tab_none"));
}

TEST(ScriptCommands, TraceGivesEachEventOnceFromTheOpeningOn) {
  const auto run = runScript("trace\ntrace\nclick chk_ask\nset Colour Red\ntrace\n");
  EXPECT_THAT(run.answers.at(0).at("events"),
              Contains(json({{"op", "load"}, {"url", "chrome://fake/content/tab.xul"}})));
  EXPECT_THAT(run.answers.at(0).at("events"),
              Contains(json({{"op", "connect"}, {"signal", "click"}, {"of", "btn_modal"}})));
  EXPECT_EQ(run.answers.at(1).at("events"), json::array());
  EXPECT_THAT(run.answers.at(4).at("events"),
              Contains(json({{"op", "signal"}, {"signal", "selection-change"}, {"of", "Colour"}, {"value", "Red"}})));
}

TEST(ScriptCommands, AfterOkOrCancelWidgetsAreGoneAndTheRestIsReadable) {
  for (const std::string closing : {"ok", "cancel"}) {
    const auto run =
        runScript("set Colour Red\n" + closing +
                  "\nwidget chk_ask\nok\ncancel\nhelp\ntab pro_tab_device\nexport d\nimport d\nget Colour\nproperties\n"
                  "setting UIMode\ndialogs\ntrace\nreload\nwidget chk_ask\nget Colour\n");
    ASSERT_THAT(run.answers, SizeIs(17));
    EXPECT_EQ(run.answers.at(1), done);
    for (std::size_t i = 2; i <= 8; ++i) EXPECT_THAT(run.answers.at(i).at("error"), HasSubstr("closed")) << i;
    EXPECT_EQ(run.answers.at(9).at("value"), "Red");
    for (std::size_t i = 10; i <= 15; ++i) EXPECT_EQ(run.answers.at(i).at("ok"), true) << i;
    EXPECT_EQ(run.answers[16].at("value"), "Black");
  }
}

TEST(ScriptCommands, TemporaryHomeSurvivesReloadAndGoesWithTheRun) {
  const auto run = runScript("setting kilnworks.user.path\nreload\nsetting kilnworks.user.path\n");
  const std::string folder = run.answers.at(0).at("value");
  EXPECT_EQ(run.answers.at(2).at("value"), folder);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(folder).parent_path()));
}

TEST(ScriptCommands, NamedHomeIsMadeAndStays) {
  Script::Request request = fakeRequest();
  request.preferences.home = std::filesystem::path(testing::TempDir()) / "kiln-script-home" / "made";
  std::filesystem::remove_all(request.preferences.home);
  runScript("reload\n", request);
  EXPECT_TRUE(std::filesystem::is_directory(request.preferences.home / "user"));
  EXPECT_TRUE(std::filesystem::is_directory(request.preferences.home / "profile"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(request.preferences.home), {}), 2);
}

TEST(ScriptCommands, UndoAndDefaultsTakeChangesBack) {
  const auto run = runScript("undo\nset Colour Red\nundo\nget Colour\nset Colour Red\ndefaults\nget Colour\n");
  EXPECT_EQ(run.answers.at(0), json({{"ok", false}, {"error", "There is nothing to undo."}}));
  EXPECT_EQ(run.answers.at(2), done);
  EXPECT_EQ(run.answers.at(3).at("value"), "Black");
  EXPECT_EQ(run.answers.at(5), done);
  EXPECT_EQ(run.answers.at(6).at("value"), "Black");
}

TEST(ScriptCommands, RedoDoesAgainWhatUndoTookBack) {
  const auto run = runScript("redo\nset Colour Red\nundo\nredo\nget Colour\n");
  EXPECT_EQ(run.answers.at(0), json({{"ok", false}, {"error", "There is nothing to redo."}}));
  EXPECT_EQ(run.answers.at(3), done);
  EXPECT_EQ(run.answers.at(4).at("value"), "Red");
}

TEST(ScriptCommands, PresetsAreSavedChosenRenamedAndDeleted) {
  const auto run = runScript("set Colour Red\npreset-save Mine\ndefaults\npresets\npreset Mine\nget Colour\n"
                             "preset-rename Yours\npresets\npreset-delete\npresets\npreset Mine\n");
  EXPECT_EQ(run.answers.at(1), done);
  EXPECT_EQ(run.answers.at(3),
            json({{"ok", true}, {"presets", json::array({"Mine"})}, {"chosen", "Mine"}, {"changed", true}}));
  EXPECT_EQ(run.answers.at(4), json({{"ok", true}, {"watermarkGone", false}, {"overlayGone", false}}));
  EXPECT_EQ(run.answers.at(5).at("value"), "Red");
  EXPECT_EQ(run.answers.at(7),
            json({{"ok", true}, {"presets", json::array({"Yours"})}, {"chosen", "Yours"}, {"changed", false}}));
  EXPECT_EQ(run.answers.at(9),
            json({{"ok", true}, {"presets", json::array()}, {"chosen", nullptr}, {"changed", false}}));
  EXPECT_EQ(run.answers.at(10).at("ok"), false);
}

TEST(ScriptCommands, PrintAsksThePluginAndLeavesThePreferencesOpen) {
  const auto run = runScript("print\nclick chk_veto\nprint\nwidget chk_veto\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(2), json({{"ok", true}, {"vetoed", true}}));
  EXPECT_EQ(run.answers.at(3).at("ok"), true);
  const auto asking = runScript("click chk_ask\nprint\ncancel\nprint\nok\n");
  EXPECT_THAT(asking.answers.at(1).at("modal"), HasSubstr("dlg_question"));
  EXPECT_EQ(asking.answers.at(2), json({{"ok", true}, {"vetoed", true}}));
  EXPECT_EQ(asking.answers.at(4), done);
}

TEST(ScriptCommands, DropIndexDropsTheItemAtThatPosition) {
  const auto run = runScript("drop-index lst_source 0 img_slot\nwidget lbl_log\ndrop-index lst_source 1 img_slot\n");
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("label"), "Red");
  EXPECT_EQ(run.answers.at(2).at("error"), "The widget \"lst_source\" has no item at 1; it has 1.");
  EXPECT_EQ(answer("drop-index lst_fixed 0 img_slot").at("ok"), false);
}

TEST(ScriptCommands, ReopenTakesModelLanguageAndValues) {
  const auto run = runScript("set Colour Red\nreopen standard en-US\nget Colour\nreopen standard en-US Colour=Red\n"
                             "get Colour\nreopen standard en-US Colour\nreopen none en-US\nget Colour\n");
  EXPECT_EQ(run.answers.at(2).at("value"), "Black");
  EXPECT_EQ(run.answers.at(4).at("value"), "Red");
  EXPECT_EQ(run.answers.at(5).at("error"), "\"Colour\" is not NAME=VALUE.");
  EXPECT_EQ(run.answers.at(6).at("ok"), false);
  EXPECT_EQ(run.answers.at(7).at("error"), "The preferences could not be opened.");
}

TEST(ScriptCommands, TraceFileHoldsEveryEventOnALineOfItsOwn) {
  Script::Request request = fakeRequest();
  request.trace = std::filesystem::path(testing::TempDir()) / "kiln-trace.jsonl";
  const auto run = runScript("reload\ntrace\n", request);
  std::ifstream file(request.trace);
  json events = json::array();
  for (std::string line; std::getline(file, line);) events.push_back(json::parse(line));
  EXPECT_GT(events.size(), 10u);
  EXPECT_EQ(events, run.answers.at(1).at("events"));
}

TEST(ScriptCommands, UnpairedSurrogateGoesInAndOutUnchanged) {
  std::istringstream commands("set OverlayImageName a\xED\xA0\xBD\nget OverlayImageName\n");
  std::ostringstream answers;
  Script::run(fakeRequest(), commands, answers);
  EXPECT_EQ(answers.str(), "{\"ok\":true}\n{\"ok\":true,\"value\":\"a\\ud83d\"}\n");
}

TEST(ScriptCommands, RootlessHasNoUserInterface) {
  Script::Request request = fakeRequest();
  request.preferences.mode = Refhost::Mode::rootless;
  const auto run = runScript("click chk_ask\nok\nget Colour\ndialogs\n", request);
  EXPECT_THAT(run.answers.at(0).at("error"), HasSubstr("no user interface"));
  EXPECT_EQ(run.answers.at(1).at("ok"), false);
  EXPECT_EQ(run.answers.at(2).at("value"), "Black");
  EXPECT_EQ(run.answers.at(3).at("open"), json::array());
}

}  // namespace
