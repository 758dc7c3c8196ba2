// What kiln offers to a shell that completes its command line.
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

struct Offer {
  std::string files;
  std::vector<std::string> words;
};

// For the words after "kiln", the last one of which is being typed.
Offer offer(std::vector<std::string> words, const std::vector<std::string>& environment = {"LC_ALL=C"}) {
  words.insert(words.begin(), "--complete");
  const auto outcome = runKiln(words, {}, environment);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  std::istringstream lines(outcome.out);
  Offer offered;
  std::getline(lines, offered.files);
  for (std::string line; std::getline(lines, line);) offered.words.push_back(line.substr(0, line.find('\t')));
  return offered;
}

TEST(Completion, OffersTheCommandsAndWhatTheyDo) {
  const auto offered = offer({""});
  EXPECT_THAT(offered.words, IsSupersetOf({"print", "watermark", "filter", "help"}));
  EXPECT_THAT(offered.words, Each(Not(StartsWith("-"))));
  EXPECT_EQ(offered.files, ":");
  EXPECT_THAT(runKiln({"--complete", ""}).out, HasSubstr("\nsample\tWrites a sample job of four pages\n"));
}

TEST(Completion, OffersTheCommandsToHelpWith) { EXPECT_THAT(offer({"help", ""}).words, Contains("drive")); }

TEST(Completion, OffersThePartsOfACommand) {
  EXPECT_THAT(offer({"watermark", ""}).words, ElementsAre("list", "add", "edit", "delete"));
}

TEST(Completion, OffersTheOptionsOfACommandAlone) {
  EXPECT_THAT(offer({"print", "letter.pdf", "-"}).words, AllOf(Contains("--overlay"), Not(Contains("--mode"))));
  EXPECT_THAT(offer({"check", "--"}).words, AllOf(Contains("--only"), Not(Contains("--outcome"))));
  EXPECT_THAT(offer({"-"}).words, AllOf(Contains("--version"), Not(Contains("--overlay"))));
}

TEST(Completion, OffersFilesByTheKindThatTheHelpNames) {
  EXPECT_EQ(offer({"print", ""}).files, ":files .pdf");
  EXPECT_EQ(offer({"print", "letter.pdf", ""}).files, ":files .pdf");
  EXPECT_EQ(offer({"print", "letter.pdf", "printed.pdf", ""}).files, ":");
  EXPECT_EQ(offer({"print", "--watermark-text", "For review", ""}).files, ":files .pdf");
  EXPECT_EQ(offer({"show", "--screenshot", ""}).files, ":files .png");
  EXPECT_EQ(offer({"profile", "import", ""}).files, ":files .zip");
  EXPECT_EQ(offer({"overlay", "create", "Logo", ""}).files, ":files .pdf .png .jpg .jpeg");
  EXPECT_EQ(offer({"print", "--password-file", ""}).files, ":files");
  EXPECT_EQ(offer({"print", "--home", ""}).files, ":folders");
  EXPECT_EQ(offer({"print", "--home="}).files, ":folders");
}

TEST(Completion, OffersModelsAndWordsOfFixedLists) {
  EXPECT_THAT(offer({"print", "--model", ""}).words, IsSupersetOf({"standard", "kvt"}));
  EXPECT_THAT(offer({"drive", "--mode", ""}).words, ElementsAre("DocProp", "PDC", "PrePrint", "rootless"));
  EXPECT_THAT(offer({"watermark", "add", "--place="}).words, Contains("--place=top-left"));
  EXPECT_THAT(offer({"print", "--sides", ""}).words, Contains("two-sided-long-edge"));
}

TEST(Completion, OffersTheSettingsOfTheModel) {
  const auto words = offer({"print", "--set", "Mirror"}).words;
  EXPECT_THAT(words, IsSupersetOf({"MirrorImage=None", "MirrorImage=MirrorImage", "WatermarkText="}));
  EXPECT_THAT(words, Not(Contains(StartsWith("ModelNumber="))));
  EXPECT_THAT(offer({"print", "--model", "none", "--set", ""}).words, IsEmpty());
  EXPECT_THAT(offer({"filter", "--allow", ""}).words, AllOf(Contains("MirrorImage"), Not(Contains("WatermarkText"))));
}

TEST(Completion, OffersTheWatermarksOfTheHome) {
  const std::string home = (testFolder() / "home").string();
  ASSERT_EQ(runKiln({"watermark", "add", "For review", "--home", home}).status, 0);
  EXPECT_THAT(offer({"print", "--home", home, "--watermark", ""}).words, IsSupersetOf({"Draft", "For review"}));
  EXPECT_THAT(offer({"watermark", "delete", "--home=" + home, ""}).words, Contains("For review"));
  EXPECT_THAT(offer({"overlay", "delete", "--home", home, ""}).words, IsEmpty());
}

TEST(Completion, MakesNoHome) {
  const auto home = testFolder() / "none";
  EXPECT_THAT(offer({"print", "--home", home.string(), "--watermark", ""}).words, Contains("Draft"));
  EXPECT_FALSE(std::filesystem::exists(home));
}

TEST(Completion, OffersNothingWhereNothingIsKnown) {
  EXPECT_THAT(offer({"print", "--watermark-text", ""}).words, IsEmpty());
  EXPECT_THAT(offer({"nonsense", "--nonsense="}).words, IsEmpty());
  EXPECT_THAT(offer({"print", "--plugin", "/nowhere.so", "--watermark", ""}).words, IsEmpty());
  EXPECT_EQ(offer({}).files, ":");
}

TEST(Completion, ExplainsInTheLanguageOfTheUser) {
  EXPECT_THAT(runKiln({"--complete", "dr"}, {}, {"LC_ALL=de_DE.UTF-8"}).out,
              HasSubstr("print\tDruckt ein PDF mit gewählten Effekten"));
}

}  // namespace
