// The language of what kiln tells: that of the environment, and English for what programs read.
#include "app/parser_words.h"
#include "tests/script/process.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

Outcome inGerman(const std::vector<std::string>& words, const std::string& input = {}) {
  return runKiln(words, input, {"LANG=de_DE.UTF-8"});
}

TEST(Language, OfErrorsIsTheUsers) {
  const std::string file = (testFolder() / "none.pdf").string();
  const std::vector<std::string> words = {"print", file, "out.pdf"};
  EXPECT_EQ(runKiln(words).err, "kiln: \"" + file + "\" does not exist: check its name and its folder.\n");
  EXPECT_EQ(inGerman(words).err, "kiln: „" + file + "“ ist nicht vorhanden: Prüfen Sie den Namen und den Ordner.\n");
  EXPECT_EQ(inGerman(words).status, 1);
}

TEST(Language, OfHelpIsTheUsers) {
  EXPECT_THAT(inGerman({"print", "--help"}).out, StartsWith("Druckt ein PDF mit gewählten Effekten"));
  EXPECT_THAT(inGerman({"drive", "--help"}).out, HasSubstr("Rückgabewert: 0"));
  EXPECT_THAT(inGerman({}).out, HasSubstr("Befehle:\n"));
  EXPECT_THAT(runKiln({}).out, HasSubstr("Subcommands:\n"));
}

TEST(Language, OfWrongUsageIsTheUsers) {
  EXPECT_EQ(inGerman({"print"}).err, "kiln: IN.pdf ist erforderlich; siehe „kiln print --help“.\n");
  EXPECT_EQ(runKiln({"print"}).err, "kiln: IN.pdf is required; see \"kiln print --help\".\n");
}

TEST(Language, OfARefusedWatermarkIsTheUsers) {
  const auto refused = [](const std::vector<std::string>& look) {
    std::vector<std::string> words = {"watermark", "add", "Zeta", "--home", (testFolder() / "home").string()};
    words.insert(words.end(), look.begin(), look.end());
    return inGerman(words).err;
  };
  EXPECT_EQ(
      refused({"--size", "5"}),
      "kiln: Die Größe eines Wasserzeichens kann nicht „5“ sein: Sie ist eine ganze Zahl von 6 bis 300, in Punkt.\n");
  EXPECT_THAT(refused({"--style", "Heavy"}), HasSubstr("kann nicht „Heavy“ sein; möglich ist „Regular“, „Bold“"));
}

TEST(Language, OfAnOtherModuleIsTheUsersToo) {
  const auto file = testFolder() / "profile.zip";
  writeFile(file, "no archive");
  const auto import = inGerman({"profile", "import", file.string(), "--home", (testFolder() / "home").string()});
  EXPECT_THAT(import.err, HasSubstr("wird als Profil abgelehnt"));
  EXPECT_THAT(import.err, HasSubstr("beschaffen Sie eine neue Kopie"));
}

TEST(Language, OfAnswersIsEnglish) {
  const auto answered = inGerman({"drive"}, "click none\nset NoSuch value\n");
  EXPECT_EQ(answered.out, runKiln({"drive"}, "click none\nset NoSuch value\n").out);
  EXPECT_THAT(answered.out, HasSubstr("There is no widget"));
}

TEST(Language, OfPropertiesIsNobodys) {
  const auto ticket = inGerman({"ticket"});
  EXPECT_EQ(ticket.status, 0) << ticket.err;
  EXPECT_THAT(ticket.out, HasSubstr("PrintTicket"));
  EXPECT_EQ(ticket.out, runKiln({"ticket"}).out);
}

TEST(Language, OfPrefixesForASchedulerIsEnglish) {
  const auto filtered = inGerman({"filter", "1", "ada", "title", "none", ""});
  EXPECT_EQ(filtered.status, 1);
  EXPECT_THAT(filtered.err, HasSubstr("ERROR: Die Anzahl der Exemplare ist „none“"));
}

TEST(ParserSentence, IsMadeAgainFromItsTemplate) {
  for (const char* english :
       {"IN.pdf is required", "The following argument was not expected: --x", "--page: 1 required N missing",
        "--page: Value 0 not in range 1 to 9", "Could not convert: --page = x is required", "Something else: {1} = 2",
        "is required", "", "--page: Value 0 not in range"})
    EXPECT_EQ(App::parserSentence(english), english);
}

}  // namespace
