// The journal of an import in a home from elsewhere.
#include "files/file_set.h"
#include "scratch.h"

#include <gmock/gmock.h>

#include <map>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using Path = std::filesystem::path;
using Contents = std::map<std::string, std::string>;

constexpr const char* own = ".kiln-2147483645-1.tmp";

// A home, and files of somebody else's beside it.
class HostileJournal : public testing::Test {
 protected:
  HostileJournal() {
    std::filesystem::create_directories(home / "user");
    std::filesystem::create_directories(outside);
    put(home / own, "hostile");
    put(home / "user" / own, "hostile");
    put(outside / own, "hostile");
    put(outside / "victim", "precious");
    put(home / "user" / "marks.xml", "marks");
    put(home / "user" / "second", "second");
  }

  void putJournal(const std::vector<std::pair<std::string, std::string>>& entries) const {
    std::string bytes = "kiln-file-set 1\n";
    for (const auto& [temporary, target] : entries) {
      bytes.append(temporary).append(1, '\0');
      bytes.append(target).append(1, '\0');
    }
    put(journal, bytes);
  }

  // All files but journals, by their path.
  Contents files() const {
    Contents found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scratch.folder))
      if (entry.is_regular_file() && !entry.path().filename().string().starts_with("import.journal"))
        found[entry.path().lexically_relative(scratch.folder).generic_string()] = contentOf(entry.path());
    return found;
  }

  std::string refusal() const {
    return sentenceOf<Files::DiskError>([this] { Files::completeFileSet(Files::realDisk(), journal); });
  }

  // Neither it nor the good entry before it is carried out, and the next opening is not hindered.
  void expectRefused(const std::string& temporary, const std::string& target, const std::string& reason) {
    SCOPED_TRACE(temporary + " to " + target);
    putJournal({{"user/" + std::string(own), "user/marks.xml"}, {temporary, target}});
    const Contents before = files();
    EXPECT_THAT(refusal(), AllOf(HasSubstr(journal.string() + " is refused"), HasSubstr(reason),
                                 HasSubstr("Nothing is moved for it"), HasSubstr(".refused-")));
    EXPECT_EQ(files(), before);
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_EQ(refusal(), "");
  }

  Scratch scratch;
  Path home = scratch.folder / "home";
  Path outside = scratch.folder / "outside";
  Path journal = home / "import.journal";
};

TEST_F(HostileJournal, WithAnAbsolutePathMovesNothing) {
  expectRefused((outside / own).string(), (outside / "victim").string(), "absolute path");
  expectRefused(own, (outside / "victim").string(), "absolute path");
  expectRefused((home / own).string(), "marks.xml", "absolute path");
}

TEST_F(HostileJournal, WithAPathThatLeadsUpMovesNothing) {
  expectRefused("../outside/" + std::string(own), "../outside/victim", "\"..\"");
  expectRefused(own, "../outside/victim", "\"..\"");
  expectRefused("user/../../outside/" + std::string(own), "user/../../outside/victim", "\"..\"");
  expectRefused("user/../" + std::string(own), "user/../marks.xml", "\"..\"");
}

TEST_F(HostileJournal, WithAPathThatNamesNoFileMovesNothing) {
  for (const char* target : {"", ".", "..", "user/", "user/.", "./marks.xml", "user//"})
    expectRefused(own, target, "in one of its entries");
}

TEST_F(HostileJournal, MovesNoFileButTemporaryOnesOfOurs) {
  for (const char* file : {"second", ".kiln-1.tmp", ".kiln-a-1.tmp", "kiln-1-1.tmp", ".kiln-1-1.tmpx"})
    expectRefused("user/" + std::string(file), "user/marks.xml", "no temporary file");
}

TEST_F(HostileJournal, MovesNoFileToAnotherFolder) {
  expectRefused(own, "user/marks.xml", "from one folder to another");
  expectRefused("user/" + std::string(own), "marks.xml", "from one folder to another");
}

TEST_F(HostileJournal, ReplacesNoFolderAndNoFileOfOurOwn) {
  std::filesystem::create_directory(home / "user" / "folder");
  expectRefused("user/" + std::string(own), "user/folder", "no file");
  expectRefused(own, ".kiln-lock", "no import replaces");
  std::filesystem::create_directory(home / "user" / ".kiln-2147483645-2.tmp");
  expectRefused("user/.kiln-2147483645-2.tmp", "user/new", "no ordinary file");
}

TEST_F(HostileJournal, ThatIsNoFileOrTooLargeIsSetAside) {
  std::filesystem::create_directory(journal);
  EXPECT_THAT(refusal(), HasSubstr("it is no file"));
  EXPECT_EQ(refusal(), "");
  put(journal, "");
  std::filesystem::resize_file(journal, (16U << 20) + 1);
  EXPECT_THAT(refusal(), HasSubstr("it is too large"));
  EXPECT_EQ(refusal(), "");
}

// What an import writes is carried out: the tests above do not pass because nothing is.
TEST_F(HostileJournal, WithNothingButEntriesOfAnImportIsCarriedOut) {
  putJournal({{"user/" + std::string(own), "user/marks.xml"}, {own, "new"}, {".kiln-1-1.tmp", "moved before"}});
  EXPECT_EQ(refusal(), "");
  EXPECT_EQ(contentOf(home / "user" / "marks.xml"), "hostile");
  EXPECT_EQ(contentOf(home / "new"), "hostile");
  EXPECT_FALSE(std::filesystem::exists(journal));
}

}  // namespace
