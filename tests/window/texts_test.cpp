#include "host/preferences.h"
#include "window/inspector/trace_line.h"
#include "window/language/texts.h"

#include <gtest/gtest.h>

namespace Window {
namespace {

TEST(AccessKey, IsMarkedWhereTheLabelHasIt) { EXPECT_EQ(withAccessKey("Mirror image", "i"), "M&irror image"); }

TEST(AccessKey, IsFoundWhateverItsCase) { EXPECT_EQ(withAccessKey("Negative", "n"), "&Negative"); }

TEST(AccessKey, IsMarkedInItsBracketsWhereTheLabelHasThem) {
  EXPECT_EQ(withAccessKey("A3回転(3)...", "3"), "A3回転(&3)...");
}

TEST(AccessKey, StandsBehindALabelWithoutIt) { EXPECT_EQ(withAccessKey("Add", "x"), "Add(&X)"); }

TEST(AccessKey, LeavesAmpersandsOfTheLabel) { EXPECT_EQ(withAccessKey("R&D only", "o"), "R&&D &only"); }

TEST(AccessKey, MayBeMissing) { EXPECT_EQ(withAccessKey("R&D", ""), "R&&D"); }

TEST(SpokenName, IsTheTextWithoutItsKeyAndColon) {
  EXPECT_EQ(spokenName("Print &to:"), "Print to");
  EXPECT_EQ(spokenName("Preset (&B):"), "Preset");
  EXPECT_EQ(spokenName("印刷(&P)..."), "印刷...");
  EXPECT_EQ(spokenName(QString::fromUtf8("Préréglage\u00A0:")), "Préréglage");
  EXPECT_EQ(spokenName("预设："), "预设");
}

TEST(SpokenName, KeepsAmpersandsAndOtherBrackets) { EXPECT_EQ(spokenName("R&&D &only (A4)"), "R&D only (A4)"); }

TEST(Numbers, HaveTheDigitsOfTheTextsInEveryLanguage) {
  for (const char* name : {"en-US", "de-DE", "ja-JP", "ar"}) EXPECT_EQ(localeOf(name).toString(10), "10") << name;
  EXPECT_EQ(localeOf("ar").textDirection(), Qt::RightToLeft);
}

TEST(TextOfOthers, IsOnOneLineWithoutWhatIsObeyed) {
  EXPECT_EQ(plainText("a\nb"), "a b");
  EXPECT_EQ(plainText(QString::fromUtf8("a\u202Eb\u001Bc")), QString::fromUtf8("a\uFFFDb\uFFFDc"));
}

TEST(ToolTip, ShowsItsTextAsItIs) {
  EXPECT_EQ(toolTipOf("Delete", false), "Delete");
  EXPECT_EQ(toolTipOf("Delete", true), "<p>Delete</p>");
  EXPECT_EQ(toolTipOf("<img src='/etc/passwd'>", false), "<p>&lt;img src='/etc/passwd'&gt;</p>");
}

TEST(WindowTexts, RefuseANameThatNoTableHas) {
  const Refhost::ChromeFolders chrome(RESOURCES_FOLDER);
  const Refhost::StringTables tables(chrome, "en-US");
  const Texts texts(tables);
  EXPECT_EQ(texts("CANCEL"), "Cancel");
  EXPECT_EQ(texts("PAGE").arg(2).arg(3), "Page 2 of 3");
  EXPECT_THROW(texts("NO_SUCH_TEXT"), std::logic_error);
}

TEST(TraceLine, IsJsonWithItsMembersInOrder) {
  const Refhost::TraceEvent event{
      "transition",
      {{"of", u"a\"b"}, {"modal", true}, {"value", 2.0}, {"pairs", Refhost::TracePairs{{u"Rotate180", u"None"}}}}};
  EXPECT_EQ(traceLine(event),
            R"({"op":"transition","of":"a\"b","modal":true,"value":2,"pairs":[["Rotate180","None"]]})");
}

TEST(TraceLine, HasNothingThatATerminalObeys) {
  const Refhost::TraceEvent event{"write", {{"path", u"\u001B[2Ja\u009B2J\u202E"}}};
  EXPECT_EQ(traceLine(event), QString::fromUtf8("{\"op\":\"write\",\"path\":\"\\u001b[2Ja\uFFFD2J\uFFFD\"}"));
}

}  // namespace
}  // namespace Window
