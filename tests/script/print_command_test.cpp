// kiln print: settings are applied as by a user, and the job is printed with the result.
#include "tests/script/usage.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

// A blank A4 page. Without a cross-reference table, for readability; readers rebuild it.
const std::string blankPage = R"(%PDF-1.4
1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj
2 0 obj << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj
3 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R /Resources << >> >> endobj
4 0 obj << /Length 16 >> stream
10 10 50 50 re f
endstream endobj
trailer << /Root 1 0 R >>
)";

class PrintCommand : public testing::Test {
 protected:
  void SetUp() override { writeFile(in, blankPage); }

  Outcome print(std::vector<std::string> words) {
    words.insert(words.begin(), {"print", in.string(), out.string(), "--home", (testFolder() / "home").string()});
    return runKiln(words);
  }

  void expectNothingPrinted(const std::vector<std::string>& words, const std::string& part) {
    writeFile(out, "as it was");
    const auto outcome = print(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: "), HasSubstr(part)));
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    EXPECT_EQ(readFile(out), "as it was");
  }

  const path in = testFolder() / "in.pdf";
  const path out = testFolder() / "out.pdf";
};

TEST_F(PrintCommand, WritesThePrintedJobSilently) {
  const auto outcome = print({"--set", "MirrorImage=MirrorImage"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_THAT(readFile(out), StartsWith("%PDF-"));
}

TEST_F(PrintCommand, EachSettingChangesThePage) {
  ASSERT_EQ(print({}).status, 0);
  const std::string plain = readFile(out);
  for (const char* setting : {"MirrorImage=MirrorImage", "NegativeImage=Negative", "Rotate180=Rotate180"}) {
    ASSERT_EQ(print({"--set", setting}).status, 0);
    EXPECT_FALSE(samePages(readFile(out), plain)) << setting;
  }
}

TEST_F(PrintCommand, WatermarkIsChosenByItsName) {
  const auto outcome = print({"--watermark", "Draft"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(readFile(out), HasSubstr("/KilnW Do"));
  expectNothingPrinted({"--watermark", "Graft"}, "There is no watermark \"Graft\"; there are \"None\", ");
}

TEST_F(PrintCommand, FaceThatIsMissingIsASentence) {
  const auto outcome = print({"--watermark", "Draft", "--set", "WatermarkTextFont=No Such Face"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("The face \"No Such Face\" is not installed"));
}

TEST_F(PrintCommand, WatermarkThatMakesNoSenseIsRefused) {
  expectNothingPrinted({"--watermark", "Draft", "--set", "WatermarkTextColour=#12"}, "WatermarkTextColour is \"#12\"");
}

TEST_F(PrintCommand, PagesAreChosenByARule) {
  EXPECT_EQ(print({"--pages", "1-"}).status, 0);
  expectNothingPrinted({"--pages", "2-"}, "has none of the chosen pages");
  expectNothingPrinted({"--pages", "1-2-3"}, "\"1-2-3\" does not say which pages");
}

TEST_F(PrintCommand, UnknownPropertyIsRefusedWithNearNames) {
  expectNothingPrinted({"--set", "MirorImage=MirrorImage"}, "\"MirrorImage\"");
  expectNothingPrinted({"--set", "rotate180=Rotate180"}, "\"Rotate180\"");
  expectNothingPrinted({"--set", "Xyzzy=1"}, "\"Xyzzy\".");
}

TEST_F(PrintCommand, ContextPropertyIsRefused) {
  expectNothingPrinted({"--set", "ModelNumber=KVT"}, "\"ModelNumber\"");
}

TEST_F(PrintCommand, UnknownOptionIsRefusedWithThoseThereAre) {
  expectNothingPrinted({"--set", "MirrorImage=On"}, "it can be \"None\" or \"MirrorImage\".");
}

TEST_F(PrintCommand, OptionThatTheModelForbidsIsRefused) {
  expectNothingPrinted({"--model", "kvt", "--set", "Nin1=2in1", "--set", "Rotate180=Rotate180"}, "\"kvt\"");
}

TEST_F(PrintCommand, ChoiceThatTheRulesMoveIsRefusedWhateverTheOrder) {
  expectNothingPrinted({"--model", "kvt", "--set", "Rotate180=Rotate180", "--set", "Nin1=2in1"}, "became \"None\"");
}

TEST_F(PrintCommand, OneOfSeveralWrongSettingsPrintsNothing) {
  expectNothingPrinted({"--set", "MirrorImage=MirrorImage", "--set", "None=1"}, "\"None\"");
}

TEST_F(PrintCommand, LastOfTwoValuesCounts) {
  EXPECT_EQ(print({"--set", "MirrorImage=MirrorImage", "--set", "MirrorImage=None"}).status, 0);
}

TEST_F(PrintCommand, JobThatCannotBeReadIsASentence) {
  writeFile(in, "This is no PDF.");
  expectNothingPrinted({}, "in.pdf");
  std::filesystem::remove(in);
  expectNothingPrinted({}, "in.pdf");
}

TEST_F(PrintCommand, HomeIsInTheDataFolderUnlessNamed) {
  const auto data = testFolder() / "data";
  EXPECT_EQ(runKiln({"print", in.string(), out.string()}, "", {"XDG_DATA_HOME=" + data.string()}).status, 0);
  EXPECT_TRUE(std::filesystem::is_directory(data / "kiln" / "user"));
}

TEST_F(PrintCommand, RefusesAPluginThatIsNoneAsDriveDoes) {
  expectRefusal(print({"--plugin", NO_PLUGIN}), {NO_PLUGIN, "createPlugin"});
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST(PrintingCommands, HaveHelpWithExamplesAndExitStatuses) {
  for (const char* command : {"show", "print"}) expectHelp(command);
}

TEST(PrintingCommands, TellOfWrongUsageInOneSentence) {
  const std::vector<std::vector<std::string>> wrong = {{"print"},
                                                       {"print", "in.pdf"},
                                                       {"print", "in.pdf", "out.pdf", "more.pdf"},
                                                       {"print", "in.pdf", "out.pdf", "--set", "MirrorImage"},
                                                       {"show", "--page", "0"}};
  for (const auto& words : wrong) expectRefusal(runKiln(words));
}

}  // namespace
