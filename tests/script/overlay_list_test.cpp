// kiln overlay list and delete, which work without printing.
#include "tests/script/process.h"

#include <gmock/gmock.h>

namespace {

using std::filesystem::path;
using testing::HasSubstr;

// An index record: two UTF-16 fields, of 128 and 26 bytes.
std::string record(const std::string& name, const std::string& file) {
  std::string bytes(154, '\0');
  for (std::size_t i = 0; i < name.size(); ++i) bytes[2 * i] = name[i];
  for (std::size_t i = 0; i < file.size(); ++i) bytes[128 + 2 * i] = file[i];
  return bytes;
}

class OverlayList : public testing::Test {
 protected:
  OverlayList() {
    std::filesystem::create_directories(folder);
    writeFile(folder / "ovlNmFl.flo",
              record("Letterhead", "00001.opa") + record("Gone", "00002.opa") + record("Terms", "00003.opa"));
    for (const char* file : {"00001.opa", "00001.bmp", "00003.opa"}) writeFile(folder / file, "content");
  }

  Outcome overlay(std::vector<std::string> words) const {
    words.insert(words.begin(), "overlay");
    words.insert(words.end(), {"--home", home.string()});
    return runKiln(words);
  }

  const path home = testFolder() / "home";
  const path folder = home / "profile" / "overlays";
};

TEST_F(OverlayList, NamesTheOverlaysThatAreThere) { EXPECT_EQ(overlay({"list"}).out, "Letterhead\nTerms\n"); }

TEST_F(OverlayList, IsWithoutWhatIsDeleted) {
  const auto outcome = overlay({"delete", "Letterhead"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(overlay({"list"}).out, "Terms\n");
  EXPECT_EQ(readFile(folder / "ovlNmFl.flo"), record("Terms", "00003.opa"));
  EXPECT_FALSE(std::filesystem::exists(folder / "00001.opa"));
  EXPECT_FALSE(std::filesystem::exists(folder / "00001.bmp"));
}

TEST_F(OverlayList, KeepsTheOverlayOfTheFileNameThatIsNotNamed) {
  const path local = home / "localdata" / "a" / "overlays";
  std::filesystem::create_directories(local);
  writeFile(local / "ovlNmFl.flo", record("Alpha", "00001.opa"));
  writeFile(local / "00001.opa", "content");
  const auto outcome = overlay({"delete", "Alpha"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(local / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(folder / "00001.opa"));
  EXPECT_EQ(overlay({"list"}).out, "Letterhead\nTerms\n");
}

TEST_F(OverlayList, HasTheOtherOverlayOfTheNameThatIsDeleted) {
  writeFile(folder / "ovlNmFl.flo", record("A", "00001.opa") + record("B", "00003.opa") + record("A", "00004.opa"));
  writeFile(folder / "00004.opa", "content");
  const auto outcome = overlay({"delete", "A"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "kiln: Another overlay has the name \"A\" too; it stays, and takes its place.\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "00004.opa"));
  EXPECT_EQ(overlay({"list"}).out, "A\nB\n");
  EXPECT_EQ(overlay({"delete", "A"}).err, "");
  EXPECT_EQ(overlay({"list"}).out, "B\n");
}

// "é", a new line, an escape sequence, a control of one byte in Latin-1, and an override of the direction.
const std::u16string foreignName = u"\u00E9\nForm\u001B[2J\u009B\u202Etrohs";
const std::string foreignNameAsListed = "\u00E9 Form\uFFFD[2J\uFFFD\uFFFDtrohs";

std::string foreignRecord(const std::u16string& name, const std::string& file) {
  std::string bytes = record("", file);
  for (std::size_t i = 0; i < name.size(); ++i) {
    bytes[2 * i] = static_cast<char>(name[i] & 0xFF);
    bytes[2 * i + 1] = static_cast<char>(name[i] >> 8);
  }
  return bytes;
}

TEST_F(OverlayList, HasALineForEachNameWhateverIsInIt) {
  writeFile(folder / "ovlNmFl.flo", record("Terms", "00003.opa") + foreignRecord(foreignName, "00001.opa"));
  EXPECT_EQ(overlay({"list"}).out, "Terms\n" + foreignNameAsListed + "\n");
}

TEST_F(OverlayList, NamesEachOverlaySoThatItCanBeNamed) {
  writeFile(folder / "ovlNmFl.flo", record("Terms", "00003.opa") + foreignRecord(foreignName, "00001.opa"));
  const auto outcome = overlay({"delete", foreignNameAsListed});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(overlay({"list"}).out, "Terms\n");
}

TEST_F(OverlayList, NamesNoneBySeveralThatAreListedAlike) {
  writeFile(folder / "ovlNmFl.flo", foreignRecord(u"A\u001B", "00003.opa") + foreignRecord(u"A\u009B", "00001.opa"));
  const auto outcome = overlay({"delete", "A\uFFFD"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Several names are listed as \"A\uFFFD\""));
  EXPECT_EQ(overlay({"list"}).out, "A\uFFFD\nA\uFFFD\n");
}

// A home from elsewhere, with the journal of an import that was never made.
TEST_F(OverlayList, MovesNothingOutOfAHomeWithAHostileJournalAndSaysSoOnce) {
  const path outside = testFolder() / "outside";
  std::filesystem::create_directories(outside);
  writeFile(outside / "victim", "precious");
  const std::vector<std::vector<std::string>> commands = {{"overlay", "list"}, {"ticket"}};
  for (std::vector<std::string> command : commands) {
    command.insert(command.end(), {"--home", home.string()});
    for (const std::string& folder : {outside.string(), std::string("../outside")}) {
      SCOPED_TRACE(command.front() + " " + folder);
      writeFile(outside / ".kiln-2147483645-1.tmp", "hostile");
      writeFile(home / "import.journal",
                "kiln-file-set 1\n" + folder + "/.kiln-2147483645-1.tmp" + '\0' + folder + "/victim" + '\0');
      const auto first = runKiln(command);
      EXPECT_EQ(first.status, 0);
      EXPECT_THAT(first.err, HasSubstr("import.journal is refused"));
      EXPECT_EQ(readFile(outside / "victim"), "precious");
      const auto second = runKiln(command);
      EXPECT_EQ(second.status, 0);
      EXPECT_EQ(second.err, "");
      EXPECT_EQ(second.out, first.out);
    }
  }
}

TEST_F(OverlayList, IsNamedWhereAnOverlayIsUnknown) {
  const auto outcome = overlay({"delete", "Gone"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("There is no overlay \"Gone\"; \"kiln overlay list\" lists them."));
}

}  // namespace
