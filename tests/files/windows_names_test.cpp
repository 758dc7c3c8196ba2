#include "files/windows_names.h"

#include <gtest/gtest.h>

using Files::windowsNameProblem;

namespace {

TEST(WindowsNames, OrdinaryOnesAreTaken) {
  for (const auto name : {u"ZVeffect.xml", u".hidden", u"a b", u"CONSOLE", u"COM", u"COM10", u"LPTX", u"nul1", u"a.nul",
                          u"\u4E0B\u66F8\u304D.xml"})
    EXPECT_EQ(windowsNameProblem(name), "");
}

TEST(WindowsNames, DevicesAreRefusedWithAnyEnding) {
  for (const auto name : {u"CON", u"nul", u"Aux", u"prn.txt", u"COM1", u"lpt9.xml", u"COM0", u"NUL .txt", u"nul.tar.gz",
                          u"COM\u00B9", u"CONIN$"})
    EXPECT_NE(windowsNameProblem(name).find("stands for a device; choose another name."), std::string::npos);
}

TEST(WindowsNames, EndsThatAreCutAwayAreRefused) {
  for (const auto name : {u"a.", u"a ", u"...", u" "})
    EXPECT_NE(windowsNameProblem(name).find("ends with a dot or a space"), std::string::npos);
}

TEST(WindowsNames, CharactersWithAMeaningAreRefused) {
  for (const auto name : {u"a:stream", u"a*", u"a?", u"<a", u"a|b", u"\"a", u"a\u0001", u"a\\b"})
    EXPECT_NE(windowsNameProblem(name).find("has a character that names cannot have"), std::string::npos);
}

TEST(WindowsNames, AreShownInTheSentence) {
  EXPECT_EQ(windowsNameProblem(u"con.xml"), "the name \"con.xml\" stands for a device; choose another name.");
}

}  // namespace
