// Failures of a plug-in: a sentence that names its library and the call.
#include "host/plugin_failures.h"
#include "tests/script/scripted.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

Script::Request failingAt(const std::u16string& call, const std::u16string& how = u"") {
  Script::Request request = fakeRequest();
  request.preferences.settings.emplace_back(u"fake.fails", call);
  request.preferences.settings.emplace_back(u"fake.throws", how);
  return request;
}

std::string openingFails(const Script::Request& request) {
  try {
    runScript("", request);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "it did not fail";
}

std::string errorOf(const std::string& command, const Script::Request& request) {
  return runScript(command + "\n", request).answers.at(0).value("error", "it did not fail");
}

TEST(PluginFailure, NamesTheStepOfOpening) {
  for (const std::string call : {"createPlugin", "create", "initialise", "configureUI", "ready"})
    EXPECT_EQ(openingFails(failingAt(std::u16string(call.begin(), call.end()))),
              failedAt(call, "thrown by the plug-in"));
  Script::Request rootless = failingAt(u"rootlessActivation");
  rootless.preferences.mode = Refhost::Mode::rootless;
  EXPECT_EQ(openingFails(rootless), failedAt("rootlessActivation", "thrown by the plug-in"));
}

TEST(PluginFailure, NamesTheActionThatTheHostHasDispatched) {
  EXPECT_EQ(errorOf("ok", failingAt(u"pre-accept")), failedAt("pre-accept", "thrown by the plug-in"));
  EXPECT_EQ(errorOf("help", failingAt(u"help")), failedAt("help", "thrown by the plug-in"));
  EXPECT_EQ(errorOf("set Colour Red", failingAt(u"Red")),
            failedAt("selection-change of Colour", "thrown by the plug-in"));
  const std::string folder = testing::TempDir() + "failing_profile";
  EXPECT_EQ(errorOf("export " + folder, failingAt(u"profile export")),
            failedAt("profile export", "thrown by the plug-in"));
  EXPECT_EQ(errorOf("import " + folder, failingAt(u"profile import")),
            failedAt("profile import", "thrown by the plug-in"));
  EXPECT_EQ(errorOf("type txt_name throw", fakeRequest()), failedAt("text of txt_name", "thrown while typing"));
}

TEST(PluginFailure, IsASentenceWhateverIsThrown) {
  EXPECT_EQ(openingFails(failingAt(u"configureUI", u"a number")),
            failedAt("configureUI", "An exception was thrown that is no std::exception."));
  EXPECT_EQ(openingFails(failingAt(u"configureUI", u"no message")),
            failedAt("configureUI", "An exception was thrown without a message."));
  EXPECT_EQ(openingFails(failingAt(u"configureUI", u"the standard's")),
            failedAt("configureUI", "thrown as any library throws"));
}

TEST(PluginFailure, LeavesTheHostsSentencesAsTheyAre) {
  EXPECT_EQ(openingFails(failingAt(u"configureUI", u"the host's")), "nothing is no address of a resource.");
  EXPECT_EQ(errorOf("set Colour Red", failingAt(u"Red", u"the host's")), "nothing is no address of a resource.");
}

TEST(PluginFailure, LeavesAHostsSentenceThatThePluginRepeats) {
  const std::string sentence = errorOf("set Colour Red", failingAt(u"Red", u"the host's, repeated"));
  EXPECT_THAT(sentence, EndsWith(" Mend it."));
  EXPECT_THAT(sentence, Not(HasSubstr("fake_plugin")));
}

TEST(PluginFailure, ThatThePluginHasDealtWithIsNotNamedLater) {
  Refhost::PluginCalls calls;
  Refhost::PluginFailures failures("a.so", calls);
  const auto fail = [] { throw std::runtime_error("It fails."); };
  const auto dealWith = [&] { EXPECT_THROW(calls.run("first", fail), std::runtime_error); };
  EXPECT_EQ(failures.sentenceOf(dealWith), "");
  EXPECT_EQ(failures.sentenceOf(fail), "It fails.");
  EXPECT_EQ(failures.sentenceOf([&] { calls.run("second", fail); }), "a.so, second: It fails.");
  EXPECT_EQ(failures.sentenceOf(fail), "It fails.");
}

Script::Request answering(const std::u16string& times) {
  Script::Request request = fakeRequest();
  request.preferences.settings.emplace_back(u"fake.red", u"answers");
  request.preferences.settings.emplace_back(u"fake.answers", times);
  return request;
}

TEST(SelectionChange, ThatAnswersItselfWithoutEndIsASentence) {
  const auto run = runScript("set CancelJob True\nget CancelJob\n", answering(u"0"));
  EXPECT_EQ(run.answers.at(1).at("value"), "True");
  const std::string sentence = openingFails(answering(u"1000000"));
  EXPECT_THAT(sentence, StartsWith(failedAt("selection-change of Colour", "The signal selection-change of Colour ")));
  EXPECT_THAT(sentence, HasSubstr("answers itself without end"));
}

TEST(SelectionChange, MayAnswerItselfDozensOfTimes) {
  const auto run = runScript("get Colour\nset Colour Red\nget Colour\n", answering(u"51"));
  EXPECT_EQ(run.answers.at(0).at("value"), "Red") << "the 51st answer to Black";
  EXPECT_EQ(run.status, 0);
}

TEST(Transition, IsSubmittedOnce) {
  Script::Request request = fakeRequest();
  request.preferences.settings.emplace_back(u"fake.red", u"submits twice");
  const auto run = runScript("set Colour Red\nget CancelJob\n", request);
  EXPECT_EQ(run.answers.at(0).at("error"),
            failedAt("selection-change of Colour",
                     "IPropertyManager::submit was called with a transition for the second time."));
  EXPECT_EQ(run.answers.at(1).at("value"), "True");
}

}  // namespace
