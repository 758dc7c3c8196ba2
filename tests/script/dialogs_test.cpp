// Commands and answers while dialogs are open.
#include "tests/script/scripted.h"

#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

const std::string outer = "chrome://fake/content/dlg_outer.xul";
const std::string inner = "chrome://fake/content/dlg_inner.xul";
const std::string question = "chrome://fake/content/dlg_question.xul";

const json done = {{"ok", true}};
json opened(const std::string& url) { return {{"ok", true}, {"modal", url}}; }
const json vetoed = {{"ok", true}, {"vetoed", true}};
json refused(const std::string& sentence) { return {{"ok", false}, {"error", sentence}}; }

Script::Request openingWith(const std::u16string& what) {
  Script::Request request = fakeRequest();
  request.preferences.settings.emplace_back(u"fake.opening", what);
  return request;
}

// A plug-in that opens a dialog, in the way of `what`, when Colour becomes Red.
Script::Request withRed(const std::u16string& what) {
  Script::Request request = fakeRequest();
  request.preferences.settings.emplace_back(u"fake.red", what);
  return request;
}

std::string logOf(const json& widget) { return widget.at("label"); }

TEST(ScriptDialogs, CommandThatOpensAModalDialogIsAnsweredWhenItIsOpen) {
  const auto run = runScript("click btn_modal\ndialogs\nok\nwidget lbl_log\n");
  ASSERT_THAT(run.answers, SizeIs(4));
  EXPECT_EQ(run.answers.at(0), opened(outer));
  EXPECT_EQ(run.answers.at(1), json({{"ok", true}, {"open", {outer}}, {"okEnabled", true}}));
  EXPECT_EQ(run.answers.at(2), done);
  EXPECT_EQ(logOf(run.answers.at(3)), "outer is closed");
  EXPECT_EQ(run.status, 0);
}

TEST(ScriptDialogs, ClosingCommandIsAnsweredAtTheNextModalDialog) {
  const auto run = runScript("click btn_two\nok\ncancel\nwidget lbl_log\n");
  ASSERT_THAT(run.answers, SizeIs(4));
  EXPECT_EQ(run.answers.at(0), opened(outer));
  EXPECT_EQ(run.answers.at(1), opened(question));
  EXPECT_EQ(run.answers.at(2), done);
  EXPECT_EQ(logOf(run.answers.at(3)), "both are closed");
}

TEST(ScriptDialogs, NestedDialogsTakeTheCommandsInnermostFirst) {
  const auto run = runScript("click btn_modal\nclick btn_inner\ndialogs\nwidget lbl_inner\nok\ndialogs\ncancel\n");
  ASSERT_THAT(run.answers, SizeIs(7));
  EXPECT_EQ(run.answers.at(0), opened(outer));
  EXPECT_EQ(run.answers.at(1), opened(inner));
  EXPECT_EQ(run.answers.at(2).at("open"), json({outer, inner}));
  EXPECT_EQ(run.answers.at(3).at("label"), "inner");
  EXPECT_EQ(run.answers.at(4), done);
  EXPECT_EQ(run.answers.at(5).at("open"), json({outer}));
  EXPECT_EQ(run.answers.at(6), done);
}

TEST(ScriptDialogs, WidgetsAreLookedUpInTheTopmostDialogOnly) {
  const auto run = runScript("click btn_modal\nwidget lbl_log\nclick btn_two\ncancel\nwidget lbl_log\n");
  EXPECT_EQ(run.answers.at(1).at("ok"), false);
  EXPECT_EQ(run.answers.at(2).at("ok"), false);
  EXPECT_EQ(run.answers.at(4).at("ok"), true);
  EXPECT_EQ(run.status, 1);
}

TEST(ScriptDialogs, VetoedOkLeavesTheDialogOpen) {
  const auto run = runScript("click btn_modal\nclick chk_veto\nok\ndialogs\nclick chk_veto\nok\ndialogs\n");
  ASSERT_THAT(run.answers, SizeIs(7));
  EXPECT_EQ(run.answers.at(2), vetoed);
  EXPECT_EQ(run.answers.at(3).at("open"), json({outer}));
  EXPECT_EQ(run.answers.at(5), done);
  EXPECT_EQ(run.answers.at(6).at("open"), json::array());
  EXPECT_EQ(run.status, 0);
}

TEST(ScriptDialogs, LaterVetoIsInTheAnswerOfTheCommandThatLetItFall) {
  const auto run = runScript("click btn_modal\nclick chk_ask\nok\ncancel\ndialogs\nok\nok\ndialogs\n");
  ASSERT_THAT(run.answers, SizeIs(8));
  EXPECT_EQ(run.answers.at(2), opened(question));
  EXPECT_EQ(run.answers.at(3), vetoed);
  EXPECT_EQ(run.answers.at(4).at("open"), json({outer}));
  EXPECT_EQ(run.answers.at(5), opened(question));
  EXPECT_EQ(run.answers.at(6), done);
  EXPECT_EQ(run.answers.at(7).at("open"), json::array());
}

TEST(ScriptDialogs, OkThatCannotBePressedIsRefused) {
  const auto run = runScript("click btn_modal\nclick btn_disable_ok\ndialogs\nok\ndialogs\n");
  EXPECT_EQ(run.answers.at(2).at("okEnabled"), false);
  EXPECT_EQ(run.answers.at(3).at("ok"), false);
  EXPECT_EQ(run.answers.at(4).at("open"), json({outer}));
}

TEST(ScriptDialogs, PreAcceptMayVeto) {
  const auto run = runScript("click chk_veto\nok\nwidget chk_veto\nclick chk_veto\nok\nwidget chk_veto\n");
  ASSERT_THAT(run.answers, SizeIs(6));
  EXPECT_EQ(run.answers.at(1), vetoed);
  EXPECT_EQ(run.answers.at(2).at("ok"), true);
  EXPECT_EQ(run.answers.at(4), done);
  EXPECT_EQ(run.answers.at(5).at("ok"), false);
}

TEST(ScriptDialogs, PreAcceptMayAskFirst) {
  const auto run = runScript("click chk_ask\nok\ncancel\nok\nok\nwidget chk_ask\n");
  ASSERT_THAT(run.answers, SizeIs(6));
  EXPECT_EQ(run.answers.at(1), opened(question));
  EXPECT_EQ(run.answers.at(2), vetoed);
  EXPECT_EQ(run.answers.at(3), opened(question));
  EXPECT_EQ(run.answers.at(4), done);
  EXPECT_EQ(run.answers.at(5).at("ok"), false);
}

TEST(ScriptDialogs, DialogThatIsNotModalTakesCommandsUntilItIsClosed) {
  const auto run = runScript("click btn_show\ndialogs\nclick chk_veto\nok\ndialogs\nclick btn_modal\ncancel\n");
  ASSERT_THAT(run.answers, SizeIs(7));
  EXPECT_EQ(run.answers.at(0), done);
  EXPECT_EQ(run.answers.at(1).at("open"), json({outer}));
  EXPECT_EQ(run.answers.at(3), done);
  EXPECT_EQ(run.answers.at(4).at("open"), json::array());
  EXPECT_EQ(run.answers.at(5), opened(outer));
}

TEST(ScriptDialogs, ExceptionReachesTheInnermostCommandAndDialogsStayOpen) {
  const auto run = runScript("click btn_modal\nclick btn_throw\ndialogs\ncancel\nclick btn_throw\n");
  ASSERT_THAT(run.answers, SizeIs(5));
  EXPECT_EQ(run.answers.at(0), opened(outer));
  EXPECT_EQ(run.answers.at(1), refused(failedAt("click of btn_throw", "thrown by the button")));
  EXPECT_EQ(run.answers.at(2).at("open"), json({outer}));
  EXPECT_EQ(run.answers.at(3), done);
  EXPECT_EQ(run.answers.at(4), refused(failedAt("click of btn_throw", "thrown by the button")));
  EXPECT_EQ(run.status, 1);
}

TEST(ScriptDialogs, ExceptionAfterADialogReachesTheCommandThatClosedIt) {
  const auto run = runScript("click btn_throw_after\nok\n");
  EXPECT_THAT(run.answers, ElementsAre(opened(question),
                                       refused(failedAt("click of btn_throw_after", "thrown after the question"))));
}

TEST(ScriptDialogs, ExceptionInOkIsNoVetoAndLeavesTheDialogOpen) {
  const auto run = runScript("click btn_modal\nclick chk_throw\nok\ndialogs\n");
  EXPECT_EQ(run.answers.at(2), refused(failedAt("ok of " + outer, "thrown by OK")));
  EXPECT_EQ(run.answers.at(3).at("open"), json({outer}));
}

TEST(ScriptDialogs, DialogThatCannotBeLoadedIsTheCommandsError) {
  const auto run = runScript("click btn_missing\n");
  EXPECT_EQ(run.answers.at(0).at("ok"), false);
  EXPECT_THAT(run.answers.at(0).at("error"), HasSubstr("missing.xul"));
}

TEST(ScriptDialogs, ModalDialogOpenBeforeTheFirstCommandIsToldInTheFirstAnswer) {
  const auto run = runScript("# nothing yet\nwidget chk_veto\nok\nwidget lbl_log\n", openingWith(u"modal"));
  ASSERT_THAT(run.answers, SizeIs(3));
  EXPECT_EQ(run.answers.at(0).at("modal"), outer);
  EXPECT_EQ(run.answers.at(0).at("kind"), "checkbox");
  EXPECT_EQ(run.answers.at(1), done);
  EXPECT_EQ(logOf(run.answers.at(2)), "outer is closed");
}

TEST(ScriptDialogs, RefusedFirstCommandTellsOfTheDialogToo) {
  const auto run = runScript("widget none\n", openingWith(u"modal"));
  EXPECT_EQ(run.answers.at(0).at("ok"), false);
  EXPECT_EQ(run.answers.at(0).at("modal"), outer);
}

TEST(ScriptDialogs, ReloadIntoAModalDialogIsAnsweredWithIt) {
  const auto run = runScript("ok\nreload\nok\n", openingWith(u"modal"));
  ASSERT_THAT(run.answers, SizeIs(3));
  EXPECT_EQ(run.answers.at(0), opened(outer));
  EXPECT_EQ(run.answers.at(1), opened(outer));
  EXPECT_EQ(run.answers.at(2), done);
}

TEST(ScriptDialogs, OpeningThatFailsIsThrown) {
  EXPECT_THROW(runScript("dialogs\n", openingWith(u"throw")), std::runtime_error);
}

TEST(ScriptDialogs, OpeningThatFailsAfterCommandsAnswersThemAll) {
  const auto run = runScript("ok\nproperties\n", openingWith(u"modal, throw"));
  ASSERT_THAT(run.answers, SizeIs(2));
  EXPECT_EQ(run.answers.at(0),
            json({{"ok", false}, {"error", failedAt("ready", "thrown after the dialog")}, {"modal", outer}}));
  EXPECT_EQ(run.answers.at(1).at("ok"), false);
  EXPECT_EQ(run.status, 1);
}

TEST(ScriptDialogs, ExceptionOfACancelLeavesTheDialogOpenUntilTheScriptEnds) {
  const auto run = runScript("click btn_modal\nclick chk_throw_cancel\ncancel\ndialogs\n");
  EXPECT_THAT(run.answers.at(2).at("error"), HasSubstr("thrown by Cancel"));
  EXPECT_THAT(run.answers.at(3).at("open"), ElementsAre(outer));
}

TEST(ScriptDialogs, EndOfTheScriptCancelsDialogsInnermostFirst) {
  Script::Request request = fakeRequest();
  request.trace = testing::TempDir() + "end_of_script.jsonl";
  const auto run = runScript("click btn_modal\nclick btn_inner", request);
  EXPECT_EQ(run.answers, std::vector<json>({opened(outer), opened(inner)}));
  EXPECT_EQ(run.status, 0);
  std::ifstream trace(request.trace);
  std::vector<std::string> labels;
  for (std::string line; std::getline(trace, line);)
    if (const json event = json::parse(line); event.value("do", "") == "setLabel") labels.push_back(event.at("value"));
  EXPECT_THAT(labels, ElementsAre("inner is closed", "outer is closed"));
}

TEST(ScriptDialogs, DialogAfterThePreferencesAreClosedTakesTheCommands) {
  for (const std::string closing : {"ok", "cancel"}) {
    const auto run = runScript(closing + "\nset Colour Red\ndialogs\nwidget lbl_question\nreload\nok\ndialogs\nwidget "
                                         "lbl_log\n",
                               withRed(u"asks"));
    ASSERT_THAT(run.answers, SizeIs(8));
    EXPECT_EQ(run.answers.at(1), opened(question));
    EXPECT_EQ(run.answers.at(2).at("open"), json({question}));
    EXPECT_EQ(run.answers.at(3).at("label"), "question");
    EXPECT_THAT(run.answers.at(4).at("error"), HasSubstr("dlg_question.xul is open"));
    EXPECT_EQ(run.answers.at(5), done);
    EXPECT_EQ(run.answers.at(6).at("open"), json::array());
    EXPECT_THAT(run.answers.at(7).at("error"), HasSubstr("closed"));
  }
}

TEST(ScriptDialogs, EndOfTheScriptCancelsADialogThatOpenedAfterThePreferencesWereClosed) {
  const auto asked = runScript("cancel\nset Colour Red\n", withRed(u"asks"));
  EXPECT_THAT(asked.answers, ElementsAre(done, opened(question)));
  EXPECT_EQ(asked.status, 0);

  Script::Request request = withRed(u"shows");
  request.trace = testing::TempDir() + "shown_after_closing.jsonl";
  const auto shown = runScript("cancel\nset Colour Red\ndialogs\n", request);
  EXPECT_EQ(shown.answers.at(2).at("open"), json({outer}));
  EXPECT_EQ(shown.status, 0);
  std::ifstream trace(request.trace);
  std::vector<std::string> dialogs;
  for (std::string line; std::getline(trace, line);)
    if (const json event = json::parse(line); event.at("op") == "dialog") dialogs.push_back(event.at("url"));
  EXPECT_THAT(dialogs, ElementsAre(outer, question)) << "cancelling the shown one asks";
}

TEST(ScriptDialogs, PluginThatAsksUntilItGetsAnOkDoesNotKeepTheScriptFromEnding) {
  const auto run = runScript("click btn_until_ok\ncancel\n");
  EXPECT_EQ(run.answers, std::vector<json>({opened(question), opened(question)}));
}

TEST(ScriptDialogs, WhatConcernsThePreferencesIsRefusedWhileADialogIsOpen) {
  const auto run = runScript(
      "click btn_show\nreload\nexport a\nimport a\ntab pro_tab_device\nhelp\nundo\ndefaults\nprint\nprint-overlay\n"
      "reopen standard en-US\nimport-profile a\nrename-overlay a\nok\nreload\n");
  ASSERT_THAT(run.answers, SizeIs(15));
  for (std::size_t i = 1; i <= 12; ++i) {
    EXPECT_EQ(run.answers.at(i).at("ok"), false) << i;
    EXPECT_THAT(run.answers.at(i).at("error"), HasSubstr("dlg_outer.xul is open")) << i;
  }
  EXPECT_EQ(run.answers.at(14), done);
}

}  // namespace
