// kiln watermark: list, add, edit and delete through the plug-in's editor.
#include "tests/script/process.h"

#include <gmock/gmock.h>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;

const std::string builtIn = "Confidential\nCopy\nDraft\nFor internal use\nUrgent\n";

class WatermarkCommand : public testing::Test {
 protected:
  Outcome watermark(std::vector<std::string> words) const {
    words.insert(words.begin(), "watermark");
    words.insert(words.end(), {"--home", home.string()});
    return runKiln(words);
  }

  std::string listed() const { return watermark({"list"}).out; }

  // Expects a sentence with this part, and that no watermark is added, changed or deleted.
  void expectRefusal(const std::vector<std::string>& words, const std::string& part) const {
    const std::string before = readFile(home / "user" / "ZVeffect.xml");
    const auto outcome = watermark(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(testing::StartsWith("kiln: "), HasSubstr(part)));
    EXPECT_EQ(readFile(home / "user" / "ZVeffect.xml"), before);
  }

  const path home = testFolder() / "home";
};

TEST_F(WatermarkCommand, ListsTheBuiltInOnes) { EXPECT_EQ(listed(), builtIn); }

TEST_F(WatermarkCommand, AddsOneWithItsLook) {
  const auto outcome = watermark({"add", "Zeta", "--size", "48", "--style", "Bold", "--colour", "#123456", "--angle",
                                  "-30", "--place", "top-right", "--transparency", "40"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(listed(), builtIn + "Zeta\n");
  std::string values = runKiln({"drive", "--home", home.string()},
                               "select-index lst_selectedWatermark 6\nget WatermarkText\nget WatermarkTextFontSize\n"
                               "get WatermarkTextStyle\nget WatermarkTextColour\nget WatermarkTextAngle\n"
                               "get WatermarkTextHeight\nget WatermarkTextWidth\nget WatermarkTextTransparency\n")
                           .out;
  for (const char* value : {"Zeta", "48", "Bold", "#00123456", "390", "U", "R", "40"}) {
    const std::string answer = std::string("\"value\":\"") + value + '"';
    const auto found = values.find(answer);
    ASSERT_NE(found, values.npos) << value << " in " << values;
    values.erase(0, found + answer.size());
  }
}

TEST_F(WatermarkCommand, ChangesWhatIsGivenAlone) {
  ASSERT_EQ(watermark({"add", "Zeta", "--size", "48", "--outline"}).status, 0);
  ASSERT_EQ(watermark({"edit", "Zeta", "--text", "Zebra", "--colour", "#FF0000"}).status, 0);
  EXPECT_EQ(listed(), builtIn + "Zebra\n");
  EXPECT_THAT(readFile(home / "user" / "ZVeffect.xml"),
              AllOf(HasSubstr("<fontsize>48</fontsize>"), HasSubstr("<colour>#FF0000</colour>"),
                    HasSubstr("<printStyle>Outline</printStyle>")));
}

TEST_F(WatermarkCommand, DeletesOne) {
  ASSERT_EQ(watermark({"add", "Zeta"}).status, 0);
  ASSERT_EQ(watermark({"delete", "Zeta"}).status, 0);
  EXPECT_EQ(listed(), builtIn);
}

TEST_F(WatermarkCommand, ReplacesAnotherWhenItIsToldTo) {
  ASSERT_EQ(watermark({"add", "Zeta", "--size", "48"}).status, 0);
  expectRefusal({"add", "Zeta", "--size", "50"}, "There is a watermark of that name already; --replace replaces it.");
  expectRefusal({"edit", "Draft", "--text", "Zeta"}, "There is a watermark of that name already");
  ASSERT_EQ(watermark({"add", "Zeta", "--size", "50", "--replace"}).status, 0);
  EXPECT_EQ(listed(), builtIn + "Zeta\n");
  EXPECT_THAT(readFile(home / "user" / "ZVeffect.xml"), HasSubstr("<fontsize>50</fontsize>"));
}

TEST_F(WatermarkCommand, RefusesWhatTheEditorDoesNotTake) {
  ASSERT_EQ(watermark({"list"}).status, 0);
  expectRefusal({"add", ""}, "needs a text");
  expectRefusal({"add", "None"}, "No watermark can have the name \"None\"");
  expectRefusal({"add", std::string(64, 'x')}, "at most 63 characters, and this one has 64");
  expectRefusal({"add", "two\nlines"}, "is one line");
  expectRefusal({"add", "Zeta", "--size", "400"}, "a whole number from 6 to 300");
  expectRefusal({"add", "Zeta", "--angle", "91"}, "a whole number from -90 to 90");
  expectRefusal({"add", "Zeta", "--transparency", "1.5"}, "a whole number from 0 to 100");
  expectRefusal({"add", "Zeta", "--colour", "red"}, "write it as #RRGGBB");
  expectRefusal({"add", "Zeta", "--place", "tpo"}, "Did you mean \"top\"?");
  expectRefusal({"add", "Zeta", "--style", "bold"}, "Did you mean \"Bold\"?");
  expectRefusal({"add", "Zeta", "--font", "No Such Face"}, "The font \"No Such Face\" is not installed.");
  expectRefusal({"add", "Zeta", "--outline", "--transparency", "4"}, "choose one of them");
  expectRefusal({"add", "Zeta", "--name", "Other"}, "leave out --name");
  expectRefusal({"add", "Zeta", "--colour", "#FF0000", "--model", "blackmark"}, "leave out --colour");
  expectRefusal({"edit", "Zeta", "--size", "12"},
                "There is no watermark \"Zeta\"; \"kiln watermark list\" lists them.");
  expectRefusal({"delete", "Darft"}, "Did you mean \"Draft\"?");
}

TEST_F(WatermarkCommand, AddsNoMoreThanThereIsRoomFor) {
  int added = 0;
  while (added < 30 && watermark({"add", "Mark " + std::to_string(added)}).status == 0) ++added;
  EXPECT_EQ(added, 20 - 5);
  expectRefusal({"add", "One more"}, "There is no room for another watermark; delete one first.");
}

}  // namespace
