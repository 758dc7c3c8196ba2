// A journal of an import whose entries lead through links.
#include "files/file_set.h"
#include "forwarding_disk.h"
#include "scratch.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* own = ".kiln-2147483645-1.tmp";

class LinkedJournal : public testing::Test {
 protected:
  LinkedJournal() {
    std::filesystem::create_directories(home);
    std::filesystem::create_directories(outside);
    put(outside / own, "hostile");
    put(outside / "victim", "precious");
  }

  std::string refusal(const std::string& temporary, const std::string& target) const {
    put(journal, "kiln-file-set 1\n" + temporary + '\0' + target + '\0');
    return sentenceOf<Files::DiskError>([this] { Files::completeFileSet(Files::realDisk(), journal); });
  }

  Scratch scratch;
  std::filesystem::path home = scratch.folder / "home";
  std::filesystem::path outside = scratch.folder / "outside";
  std::filesystem::path journal = home / "import.journal";
};

TEST_F(LinkedJournal, MovesNothingThroughALinkToAFolderOutside) {
  std::filesystem::create_directory_symlink(outside, home / "user");
  EXPECT_THAT(refusal("user/" + std::string(own), "user/victim"),
              HasSubstr((home / "user").string() + " is a link that leads out of " + home.string() + "."));
  EXPECT_EQ(contentOf(outside / "victim"), "precious");
  EXPECT_EQ(contentOf(outside / own), "hostile");
}

TEST_F(LinkedJournal, MovesNothingThroughALinkInALink) {
  std::filesystem::create_directory_symlink("..", home / "up");
  EXPECT_THAT(refusal("up/outside/" + std::string(own), "up/outside/victim"),
              HasSubstr((home / "up").string() + " is a link that leads out of " + home.string() + "."));
  EXPECT_EQ(contentOf(outside / "victim"), "precious");
}

TEST_F(LinkedJournal, MovesNoLink) {
  std::filesystem::create_symlink(outside / "victim", home / own);
  EXPECT_THAT(refusal(own, "marks.xml"), HasSubstr("no ordinary file"));
  EXPECT_FALSE(std::filesystem::is_symlink(home / "marks.xml"));
}

TEST_F(LinkedJournal, ReplacesALinkAndNotWhatItLeadsTo) {
  put(home / own, "new");
  std::filesystem::create_symlink(outside / "victim", home / "marks.xml");
  EXPECT_EQ(refusal(own, "marks.xml"), "");
  EXPECT_EQ(contentOf(home / "marks.xml"), "new");
  EXPECT_EQ(contentOf(outside / "victim"), "precious");
}

TEST_F(LinkedJournal, IsCarriedOutWhereALinkStaysInTheHome) {
  std::filesystem::create_directory(home / "real");
  std::filesystem::create_directory_symlink("real", home / "user");
  put(home / "real" / own, "new");
  EXPECT_EQ(refusal("user/" + std::string(own), "user/marks.xml"), "");
  EXPECT_EQ(contentOf(home / "real" / "marks.xml"), "new");
}

TEST_F(LinkedJournal, OfAHomeThatIsALinkItselfIsCarriedOut) {
  put(home / own, "new");
  put(journal, "kiln-file-set 1\n" + std::string(own) + '\0' + "marks.xml" + '\0');
  std::filesystem::create_directory_symlink(home, scratch.folder / "link");
  Files::completeFileSet(Files::realDisk(), scratch.folder / "link" / "import.journal");
  EXPECT_EQ(contentOf(home / "marks.xml"), "new");
}

// A person may keep a folder of the home elsewhere.
class ImportToAFolderElsewhere : public LinkedJournal {
 protected:
  ImportToAFolderElsewhere() {
    std::filesystem::create_directory_symlink(outside, home / "user");
    put(home / "settings", "old");
  }

  // The sentence of a failure.
  std::string import(Files::Disk& disk) const {
    return sentenceOf<Files::DiskError>([&] {
      Files::FileSet set(disk, journal);
      set.write(home / "settings", "new");
      set.write(home / "user" / "marks.xml", "new");
      set.commit();
    });
  }
};

TEST_F(ImportToAFolderElsewhere, IsDone) {
  EXPECT_EQ(import(Files::realDisk()), "");
  EXPECT_EQ(contentOf(outside / "marks.xml"), "new");
  EXPECT_EQ(contentOf(home / "settings"), "new");
  EXPECT_FALSE(std::filesystem::exists(journal));
}

// A disk that replaces everything but one file.
class StubbornDisk final : public ForwardingDisk {
 public:
  explicit StubbornDisk(Path file) : stubborn(std::move(file)) {}

  void replace(const Path& temporary, const Path& target) override {
    if (target == stubborn) throw Files::DiskError(target, "written", std::make_error_code(std::errc::io_error));
    ForwardingDisk::replace(temporary, target);
  }

 private:
  const Path stubborn;
};

TEST_F(ImportToAFolderElsewhere, IsCompletedAfterAnInterruption) {
  StubbornDisk disk(home / "settings");
  EXPECT_THAT(import(disk), HasSubstr("at the next opening"));
  ASSERT_TRUE(std::filesystem::exists(journal));
  EXPECT_EQ(contentOf(outside / "marks.xml"), "new");
  Files::completeFileSet(Files::realDisk(), journal);
  EXPECT_EQ(contentOf(home / "settings"), "new");
}

TEST_F(ImportToAFolderElsewhere, SaysWhatIsReplacedWhenItFails) {
  StubbornDisk first(home / "user" / "marks.xml");
  EXPECT_THAT(import(first), Not(HasSubstr("replaced already")));
  EXPECT_FALSE(std::filesystem::exists(outside / "marks.xml"));
  StubbornDisk second(journal);
  EXPECT_THAT(import(second), HasSubstr("Files outside of " + home.string() + " are replaced already."));
  EXPECT_EQ(contentOf(outside / "marks.xml"), "new");
  EXPECT_EQ(contentOf(home / "settings"), "old");
}

}  // namespace
