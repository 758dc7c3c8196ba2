// kiln print --watermark-text: a watermark for one job.
#include "tests/script/printed_job.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

using PrintWatermarkText = PrintedJob;

TEST_F(PrintWatermarkText, PrintsAsAStoredWatermarkLikeThatDoes) {
  const std::vector<std::string> look = {"-size",  "90",          "-colour", "#FF0000", "-angle",  "45",
                                         "-place", "bottom-left", "-style",  "Italic",  "-outline"};
  std::vector<std::string> add = {"watermark", "add", "Sample", "--home", home.string()};
  std::vector<std::string> words = {"--watermark-text", "Sample"};
  for (const std::string& word : look) {
    const bool isOption = word.starts_with('-');
    add.push_back(isOption ? '-' + word : word);
    words.push_back(isOption ? "--watermark" + word : word);
  }
  ASSERT_EQ(runKiln(add).status, 0);
  ASSERT_EQ(print({"--watermark", "Sample"}, wanted).status, 0);
  const auto outcome = print(words, out);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(readFile(out), readFile(wanted)));
  EXPECT_THAT(readFile(out), HasSubstr("/KilnW Do"));
}

TEST_F(PrintWatermarkText, TakesTheLookOfTheWatermarkThatIsChosen) {
  const auto plan = [&](std::vector<std::string> words) {
    words.insert(words.end(), {"--dry-run"});
    return print(words, out).out;
  };
  std::string draft = plan({"--watermark", "Draft"});
  const auto name = draft.find("\"Draft\"");
  ASSERT_NE(name, draft.npos);
  EXPECT_EQ(plan({"--watermark", "Draft", "--watermark-text", "Mine"}), draft.replace(name, 7, "\"Mine\""));
}

TEST_F(PrintWatermarkText, RefusesWhatNoWatermarkHas) {
  const auto expectRefusal = [&](const std::vector<std::string>& words, int status, const std::string& part) {
    const auto outcome = print(words, out);
    EXPECT_EQ(outcome.status, status);
    EXPECT_THAT(outcome.err, testing::AllOf(StartsWith("kiln: "), HasSubstr(part)));
    EXPECT_FALSE(std::filesystem::exists(out));
  };
  expectRefusal({"--watermark-text", ""}, 1, "needs a text");
  expectRefusal({"--watermark-text", std::string(64, 'x')}, 1, "at most 63 characters");
  expectRefusal({"--watermark-text", "x", "--watermark-size", "5"}, 1, "from 6 to 300");
  expectRefusal({"--watermark-text", "x", "--watermark-place", "middle"}, 1, "it can be \"top-left\"");
  expectRefusal({"--watermark-text", "x", "--watermark-colour", "#FF0000", "--model", "blackmark"}, 1,
                "leave out --watermark-colour");
  expectRefusal({"--watermark-size", "50"}, 2, "belongs to --watermark-text");
}

TEST_F(PrintWatermarkText, TakesItsSettingsWithoutAWord) {
  const auto outcome = print({"--watermark-text", "Sample", "--set", "WatermarkTextFontSize=30"}, out);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(PrintWatermarkText, IsNotKept) {
  ASSERT_EQ(print({"--watermark-text", "Once"}, out).status, 0);
  const auto listed = runKiln({"watermark", "list", "--home", home.string()});
  EXPECT_EQ(listed.status, 0) << listed.err;
  EXPECT_THAT(listed.out, testing::AllOf(HasSubstr("Draft"), testing::Not(HasSubstr("Once"))));
}

}  // namespace
