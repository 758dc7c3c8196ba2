// kiln overlay: creating, listing, renaming and deleting overlays on the command line.
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using std::filesystem::path;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class OverlayCommand : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(runKiln({"sample", job.string()}).status, 0); }

  Outcome overlay(std::vector<std::string> words) const {
    words.insert(words.begin(), "overlay");
    words.insert(words.end(), {"--home", home.string()});
    return runKiln(words);
  }
  std::string listed() const { return overlay({"list"}).out; }

  // The files of the user's overlays with that suffix.
  std::vector<path> files(const std::string& ending) const {
    std::vector<path> found;
    for (const auto& entry : std::filesystem::directory_iterator(home / "profile" / "overlays"))
      if (entry.path().extension() == ending) found.push_back(entry.path());
    return found;
  }

  const path job = testFolder() / "job.pdf";
  const path home = testFolder() / "home";
};

TEST_F(OverlayCommand, MakesAnOverlayOfOnePageWithItsThumbnailAndListsIt) {
  const auto outcome = overlay({"create", "Letterhead", job.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(listed(), "Letterhead\n");
  ASSERT_EQ(files(".opa").size(), 1U);
  EXPECT_THAT(readFile(files(".opa").front()), StartsWith("%PDF"));
  ASSERT_EQ(files(".bmp").size(), 1U);
  EXPECT_THAT(readFile(files(".bmp").front()), StartsWith("BM"));
}

TEST_F(OverlayCommand, PrintsOnTheOverlay) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  const auto file = files(".opa").front();
  const path printed = testFolder() / "printed.pdf";
  const path plain = testFolder() / "plain.pdf";
  const auto print = [&](const path& out, std::vector<std::string> settings) {
    settings.insert(settings.begin(), {"print", job.string(), out.string(), "--home", home.string()});
    const auto outcome = runKiln(settings);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
  };
  print(plain, {});
  print(printed, {"--set", "OverlaySel=" + file.filename().string(), "--set", "OverlaySourceFileName=" + file.string(),
                  "--set", "OverlayImage=OverlayImage"});
  EXPECT_GT(readFile(printed).size(), readFile(plain).size());
}

TEST_F(OverlayCommand, ListsNothingInANewHome) {
  const auto outcome = overlay({"list"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(OverlayCommand, ReplacesOnlyWhereItIsTold) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  const std::string old = readFile(files(".opa").front());
  const auto refused = overlay({"create", "Letterhead", job.string(), "--set", "MirrorImage=MirrorImage"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "kiln: There is an overlay \"Letterhead\" already; --replace replaces it.\n");
  EXPECT_EQ(readFile(files(".opa").front()), old);
  const auto replaced =
      overlay({"create", "Letterhead", job.string(), "--set", "MirrorImage=MirrorImage", "--replace"});
  EXPECT_EQ(replaced.status, 0) << replaced.err;
  EXPECT_FALSE(samePages(readFile(files(".opa").front()), old));
  EXPECT_EQ(listed(), "Letterhead\n");
}

TEST_F(OverlayCommand, ReplacesTheOverlayThatItIsPrintedOn) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  const auto old = readFile(files(".opa").front()).size();
  const auto replaced = overlay({"create", "Letterhead", job.string(), "--overlay", "Letterhead", "--replace"});
  EXPECT_EQ(replaced.status, 0) << replaced.err;
  EXPECT_GT(readFile(files(".opa").front()).size(), old);
  EXPECT_EQ(listed(), "Letterhead\n");
}

TEST_F(OverlayCommand, LeavesTheOldOverlayWhereTheJobIsNoPdf) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  const std::string old = readFile(files(".opa").front());
  writeFile(testFolder() / "job.txt", "no PDF");
  const auto outcome = overlay({"create", "Letterhead", (testFolder() / "job.txt").string(), "--replace"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("job.txt"));
  EXPECT_EQ(readFile(files(".opa").front()), old);
  EXPECT_EQ(listed(), "Letterhead\n");
}

TEST_F(OverlayCommand, MakesNoOverlayWithoutAName) {
  const auto outcome = overlay({"create", "", job.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kiln: An overlay needs a name.\n");
}

TEST_F(OverlayCommand, MakesNoMoreThanTwenty) {
  ASSERT_EQ(overlay({"create", "0", job.string()}).status, 0);
  const auto first = files(".opa").front();
  std::string index;
  for (int i = 0; i < 20; ++i) {
    std::string record(154, '\0');
    record[0] = static_cast<char>('a' + i);
    const std::string name = std::to_string(10'000 + i) + ".opa";
    for (std::size_t at = 0; at < name.size(); ++at) record[128 + 2 * at] = name[at];
    index += record;
    std::filesystem::copy_file(first, first.parent_path() / name, std::filesystem::copy_options::overwrite_existing);
  }
  writeFile(first.parent_path() / "ovlNmFl.flo", index);
  const auto outcome = overlay({"create", "one more", job.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kiln: There is no room for more than 20 overlays; delete one first.\n");
  const std::string names = listed();
  EXPECT_EQ(std::count(names.begin(), names.end(), '\n'), 20);
}

TEST_F(OverlayCommand, MakesAnOverlayOfTheChosenPage) {
  ASSERT_EQ(overlay({"create", "First", job.string()}).status, 0);
  ASSERT_EQ(overlay({"create", "Second", job.string(), "--page", "2"}).status, 0);
  ASSERT_EQ(files(".opa").size(), 2U);
  EXPECT_FALSE(samePages(readFile(files(".opa").front()), readFile(files(".opa").back())));
  const auto refused = overlay({"create", "Last", job.string(), "--page", "99"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("has no page 99"));
  EXPECT_EQ(overlay({"create", "Last", job.string(), "--page", "0"}).status, 2);
}

TEST_F(OverlayCommand, MakesAnOverlayOfAPictureOnThePaper) {
  // A grey pixel.
  const std::string picture(
      "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\0\0\0\0\x3A\x7E\x9B\x55"
      "\0\0\0\x0AIDAT\x78\x9C\x63\x68\0\0\0\x82\0\x81\x77\xCD\x72\xB6\0\0\0\0IEND\xAE\x42\x60\x82",
      67);
  writeFile(testFolder() / "logo.png", picture);
  const auto outcome =
      overlay({"create", "Logo", (testFolder() / "logo.png").string(), "--set", "PaperSize=Letter", "--fill"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(listed(), "Logo\n");
  EXPECT_THAT(readFile(files(".opa").front()), HasSubstr("[ 0 0 612 792 ]"));
  EXPECT_EQ(files(".bmp").size(), 1U);
}

TEST_F(OverlayCommand, RefusesTheNamesOfTheListsFirstEntries) {
  for (const char* name : {"None", "multiple", "Ohne"}) {
    const auto outcome = overlay({"create", name, job.string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, std::string("kiln: An overlay cannot be called \"") + name +
                               "\", because the list of overlays has an entry of that name; choose another name.\n");
  }
  EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(OverlayCommand, RenamesAnOverlay) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  ASSERT_EQ(overlay({"create", "Terms", job.string()}).status, 0);
  const auto outcome = overlay({"rename", "Letterhead", "Stationery"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(listed(), "Stationery\nTerms\n");
  EXPECT_EQ(files(".opa").size(), 2U);
}

TEST_F(OverlayCommand, TellsWhyAnOverlayIsNotRenamed) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  ASSERT_EQ(overlay({"create", "Terms", job.string()}).status, 0);
  const auto refusal = [this](const char* from, const char* to) {
    const auto outcome = overlay({"rename", from, to});
    EXPECT_EQ(outcome.status, 1);
    return outcome.err;
  };
  EXPECT_EQ(refusal("Logo", "Mine"), "kiln: There is no overlay \"Logo\"; \"kiln overlay list\" lists them.\n");
  EXPECT_EQ(refusal("Terms", "Letterhead"), "kiln: There is an overlay \"Letterhead\" already; choose another name.\n");
  EXPECT_EQ(refusal("Terms", ""), "kiln: An overlay needs a name.\n");
  EXPECT_THAT(refusal("Terms", "none"), HasSubstr("cannot be called \"none\""));
  EXPECT_EQ(listed(), "Letterhead\nTerms\n");
}

TEST_F(OverlayCommand, DeletesAnOverlayWithItsFiles) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  ASSERT_EQ(overlay({"create", "Terms", job.string()}).status, 0);
  const auto outcome = overlay({"delete", "Letterhead"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(listed(), "Terms\n");
  EXPECT_EQ(files(".opa").size(), 1U);
  EXPECT_EQ(files(".bmp").size(), 1U);
}

TEST_F(OverlayCommand, TellsOfADeletionThatIsNotDone) {
  ASSERT_EQ(overlay({"create", "Letterhead", job.string()}).status, 0);
  const path model = std::filesystem::path(KILN_RESOURCES) / "models" / "standard.xml";
  std::string description = readFile(model);
  description.insert(description.rfind("</model>"), "<rule unavailable=\"OverlayImage\" option=\"OverlayImage\"/>");
  writeFile(testFolder() / "plain.xml", description);
  const auto outcome = overlay({"delete", "Letterhead", "--model", (testFolder() / "plain.xml").string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kiln: The overlay \"Letterhead\" cannot be deleted now.\n");
  EXPECT_EQ(listed(), "Letterhead\n");
}

TEST_F(OverlayCommand, DeletesNothingThatIsNotThere) {
  const auto outcome = overlay({"delete", "Letterhead"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kiln: There is no overlay \"Letterhead\"; \"kiln overlay list\" lists them.\n");
}

TEST_F(OverlayCommand, TellsWhatItCanDo) {
  EXPECT_EQ(overlay({}).status, 2);
  const auto outcome = runKiln({"overlay", "--help"});
  EXPECT_EQ(outcome.status, 0);
  for (const char* part : {"create", "list", "rename", "delete"}) EXPECT_THAT(outcome.out, HasSubstr(part));
}

}  // namespace
