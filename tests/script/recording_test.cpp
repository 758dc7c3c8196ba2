// Recordings and reports: lines, what is kept, placeholders.
#include "script/placeholders.h"
#include "script/portable_text.h"
#include "script/recording.h"
#include "tests/script/scripted.h"

#include <gmock/gmock.h>

namespace {

using Refhost::ActionAnswer;
using testing::SizeIs;

TEST(RecordedLines, AreACommandWithItsAnswer) {
  Script::RecordedAction recorded{{"type", {u"txt_name", u"a \"b\" \\ c"}}};
  EXPECT_EQ(toLines(recorded), "type txt_name \"a \\\"b\\\" \\\\ c\"\n");
  recorded.answer = ActionAnswer{{{"accepted", true}, {"text", u"a"}}, {}};
  EXPECT_EQ(toLines(recorded),
            "type txt_name \"a \\\"b\\\" \\\\ c\"\n#= {\"ok\":true,\"accepted\":true,\"text\":\"a\"}\n");
  recorded.answer = ActionAnswer{{{"modal", u"chrome://a"}}, "It failed."};
  EXPECT_EQ(
      toLines(recorded),
      "type txt_name \"a \\\"b\\\" \\\\ c\"\n#= {\"ok\":false,\"error\":\"It failed.\",\"modal\":\"chrome://a\"}\n");
}

TEST(RecordedLines, HaveNoLineBreaksOfTexts) {
  EXPECT_EQ(toLines(Script::RecordedAction{{"type", {u"a", u"b\nclick c\r"}}}), "type a \"b click c \"\n");
  EXPECT_EQ(toLines(Script::RecordedAction{{"type", {u"a", u""}}}), "type a \"\"\n");
}

TEST(RecordingTest, HasTheOptionsThatReplayIt) {
  Refhost::Options options = fakeRequest().preferences;
  options.home = testing::TempDir() + "no home";
  options.properties = {{u"Colour", u"Red"}, {u"OverlayImageName", u"x"}, {u"OverlayImageName", u""}};
  options.settings = {{u"a", u"b"}, {u"c", std::nullopt}};
  options.withoutWidgets = {u"btn_modal"};
  options.active = false;
  options.dpi = 120;
  options.fonts = [] { return std::vector<std::u16string>{u"One", u"Two, with a comma", u"Three"}; };
  Script::Recording recording(Script::Facts{{"kiln", "1.0"}});
  recording.opens(options);
  EXPECT_EQ(toLines(recording.facts()),
            "#: kiln 1.0\n#: model standard\n#: mode DocProp\n#: locale en-US\n#: inactive\n#: dpi 120\n"
            "#: fonts One,Three\n#: config a=b\n#: config c-\n#: property Colour=Red\n#: without btn_modal\n");
}

TEST(RecordingTest, KeepsTheLatestActions) {
  Script::Recording recording({}, 100);
  recording.opens(fakeRequest().preferences);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(recording.isWhole(), i < 4);
    recording.begins({"click", {u"btn_modal"}});
    recording.answered({});
  }
  EXPECT_THAT(recording.actions(), SizeIs(3));
}

TEST(PortableText, HasNoHome) {
  const std::filesystem::path home = std::filesystem::path("some") / "home";
  EXPECT_EQ(Script::withoutHome("See \"" + (home / "user" / "a.xml").string() + "\" \\ again.", home),
            "See \"{home}/user/a.xml\" \\ again.");
  EXPECT_EQ(Script::withHome("{home}/user and {home}", home), "some/home/user and some/home");
  EXPECT_EQ(Script::withoutHome("nothing", {}), "nothing");
}

TEST(PortableText, NumbersMadeUpNamesInTheirOrder) {
  Script::MadeNames names;
  EXPECT_EQ(names.numbered("WM_1A_2_3, 12345.opa, 12345.bmp"), "{made 1}, {made 2}.opa, {made 2}.bmp");
  EXPECT_EQ(names.numbered("00000.opa WM_1A_2_3 WM_"), "{made 3}.opa {made 1} WM_");
  EXPECT_TRUE(Script::isMadeName("WM_1A_2_3"));
  EXPECT_TRUE(Script::isMadeName("12345.opa"));
  EXPECT_FALSE(Script::isMadeName("Letter 12345.opa"));
  EXPECT_FALSE(Script::isMadeName("WM_x"));
}

TEST(PlaceholdersTest, AreTheSameForTheSameText) {
  Script::Placeholders texts;
  EXPECT_EQ(texts.of("Anna"), "text 1");
  EXPECT_EQ(texts.of("Bert"), "text 2");
  EXPECT_EQ(texts.of("Anna"), "text 1");
  EXPECT_EQ(texts.of(""), "");
}

TEST(PlaceholdersTest, StandInSentences) {
  Script::Placeholders texts;
  texts.of("Anna");
  texts.of("Annabel");
  EXPECT_EQ(texts.inSentence("Annabel, \"Anna\" and “Carl” in {home}/user."),
            "text 2, \"text 1\" and “text 3” in {home}/user.");
  EXPECT_EQ(texts.inSentence("The file C:\\Users\\Anna cannot be read."), "text 4");
  EXPECT_EQ(texts.inSentence("The dialog chrome://a/b.xul is open."), "The dialog chrome://a/b.xul is open.");
}

}  // namespace
