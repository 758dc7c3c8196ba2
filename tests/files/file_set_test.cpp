#include "failing_disk.h"
#include "files/file_set.h"
#include "forwarding_disk.h"
#include "model_disk.h"
#include "scratch.h"

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Path = std::filesystem::path;
using Contents = ModelDisk::Contents;
using Damage = std::set<std::string>;

const Path home = "home";
const Path journal = home / "import.journal";
const Path marks = home / "user" / "marks.xml";
const Path index = home / "overlays" / "index.flo";
const Path form = home / "overlays" / "12345.opa";  // does not exist before
const Contents before = {{index, "old index"}, {marks, "old marks"}};
const Contents after = {{form, "form"}, {index, "new index"}, {marks, "new marks"}};

void writeAll(Files::FileSet& set) {
  for (const auto& [path, bytes] : after) set.write(path, bytes);
}

// A function that replaces the files.
using Writer = void (*)(Files::Disk&);

void replaceTogether(Files::Disk& disk) {
  Files::FileSet set(disk, journal);
  writeAll(set);
  set.commit();
}

void replaceOneByOne(Files::Disk& disk) {
  for (const auto& [path, bytes] : after) Files::replaceWhole(disk, path, bytes);
}

// With a journal whose entries may be lost.
void replaceWithoutFlushingFolders(Files::Disk& disk) {
  class Hasty final : public ForwardingDisk {
   public:
    using ForwardingDisk::ForwardingDisk;
    void syncFolder(const Path& folder) override {
      if (folder == home) disk.syncFolder(folder);
    }
  };
  Hasty hasty(disk);
  replaceTogether(hasty);
}

Contents withoutTemporaries(Contents files) {
  std::erase_if(files, [](const auto& file) { return file.first.extension() == ".tmp"; });
  return files;
}

// The files after the next opening, given the files left by a loss of power.
Contents opened(const Contents& left) {
  ModelDisk disk;
  for (const auto& [path, bytes] : left) disk.place(path, bytes);
  Files::completeFileSet(disk, journal);
  return withoutTemporaries(disk.seen());
}

Damage damageIn(const std::set<Contents>& states) {
  Damage damage;
  for (const Contents& state : states) {
    const Contents files = opened(state);
    if (files == before || files == after) continue;
    damage.insert("neither as before nor as after");
  }
  return damage;
}

Damage damageBy(Writer write) {
  ModelDisk disk;
  for (const auto& [path, bytes] : before) disk.place(path, bytes);
  Damage damage;
  disk.look = [&](const std::set<Contents>& states) { damage.merge(damageIn(states)); };
  write(disk);
  for (const Contents& state : disk.afterPowerLoss())
    if (opened(state) != after) damage.insert("not as after when it was done");
  return damage;
}

TEST(FileSet, IsReplacedWholeOrNotAtAllWheneverThePowerFails) { EXPECT_THAT(damageBy(replaceTogether), IsEmpty()); }

TEST(FileSet, TestBitesWhoReplacesOneByOne) {
  EXPECT_THAT(damageBy(replaceOneByOne), ElementsAre("neither as before nor as after"));
}

TEST(FileSet, TestBitesWhoDoesNotFlushTheFoldersFirst) {
  EXPECT_THAT(damageBy(replaceWithoutFlushingFolders), testing::Not(IsEmpty()));
}

TEST(FileSet, LeavesNothingElseOnTheMedium) {
  ModelDisk disk;
  replaceTogether(disk);
  EXPECT_EQ(disk.afterPowerLoss(), std::set<Contents>{after});
}

// The power may fail again while the next opening completes the set.
TEST(FileSet, IsCompletedWheneverThePowerFailsMeanwhile) {
  ModelDisk first;
  for (const auto& [path, bytes] : before) first.place(path, bytes);
  std::set<Contents> decided;
  first.look = [&](const std::set<Contents>& states) {
    for (const Contents& state : states)
      if (state.contains(journal) && opened(state) == after) decided.insert(state);
  };
  replaceTogether(first);
  ASSERT_FALSE(decided.empty());
  for (const Contents& left : decided) {
    ModelDisk disk;
    for (const auto& [path, bytes] : left) disk.place(path, bytes);
    disk.look = [&](const std::set<Contents>& states) {
      for (const Contents& state : states) EXPECT_EQ(opened(state), after);
    };
    Files::completeFileSet(disk, journal);
  }
}

TEST(FileSet, ThatFailsAtAnyStepIsAsBeforeOrIsCompletedAsItSays) {
  int failures = 0;
  for (int failing = 1;; ++failing) {
    ModelDisk model;
    for (const auto& [path, bytes] : before) model.place(path, bytes);
    FailingDisk disk(model);
    disk.failing = failing;
    const std::string sentence = sentenceOf<Files::DiskError>([&] { replaceTogether(disk); });
    const bool isLeftToTheNextOpening = sentence.find("at the next opening") != std::string::npos;
    EXPECT_THAT(damageIn(model.afterPowerLoss()), IsEmpty()) << failing;
    if (disk.operations < failing) break;  // no more operations
    ++failures;
    if (sentence.empty() || isLeftToTheNextOpening)
      EXPECT_EQ(opened(model.seen()), after) << failing;
    else
      EXPECT_EQ(model.seen(), before) << failing << ": " << sentence;
  }
  EXPECT_GT(failures, 20);
}

TEST(FileSet, ThatIsNotCommittedLeavesNoTrace) {
  ModelDisk disk;
  {
    Files::FileSet set(disk, journal);
    writeAll(set);
  }
  EXPECT_THAT(disk.seen(), IsEmpty());
}

TEST(FileSet, OfFilesThatHoldTheirNewContentWritesNothing) {
  ModelDisk disk;
  for (const auto& [path, bytes] : after) disk.place(path, bytes);
  disk.look = [](const auto&) { ADD_FAILURE() << "something was changed"; };
  replaceTogether(disk);
}

TEST(FileSet, MovesWithItsFolderBeforeItIsCompleted) {
  Scratch scratch;
  const Path first = scratch.folder / "first";
  const Path second = scratch.folder / "second";
  std::filesystem::create_directories(first / "user");
  {
    FailingDisk disk(Files::realDisk());
    Files::FileSet set(disk, first / "import.journal");
    set.write(first / "user" / "marks.xml", "new");
    disk.failing = disk.operations + 14;  // the rename
    EXPECT_THAT(sentenceOf<Files::DiskError>([&] { set.commit(); }), HasSubstr("at the next opening"));
  }
  ASSERT_TRUE(std::filesystem::exists(first / "import.journal"));
  std::filesystem::rename(first, second);
  Files::completeFileSet(Files::realDisk(), second / "import.journal");
  EXPECT_EQ(contentOf(second / "user" / "marks.xml"), "new");
  EXPECT_THAT(namesIn(second), ElementsAre("user"));
  EXPECT_THAT(namesIn(second / "user"), ElementsAre("marks.xml"));
}

TEST(FileSet, IsRefusedWhileAnotherIsNotComplete) {
  ModelDisk disk;
  disk.place(journal, "kiln-file-set 1\n");
  EXPECT_THAT(sentenceOf<Files::DiskError>([&] { replaceTogether(disk); }), HasSubstr("Another import"));
  EXPECT_EQ(disk.seen(), (Contents{{journal, "kiln-file-set 1\n"}}));
}

TEST(FileSet, JournalThatIsDamagedIsSetAsideAndTold) {
  using namespace std::string_literals;
  for (const std::string& bytes : {""s, "something else"s, "kiln-file-set 1\nuser/a"s, "kiln-file-set 1\nuser/a\0"s}) {
    ModelDisk disk;
    disk.place(journal, bytes);
    EXPECT_THAT(sentenceOf<Files::DiskError>([&] { Files::completeFileSet(disk, journal); }),
                AllOf(HasSubstr("it is damaged"), HasSubstr("import.journal.refused-1")))
        << bytes;
    EXPECT_EQ(disk.seen(), (Contents{{home / "import.journal.refused-1", bytes}}));
    Files::completeFileSet(disk, journal);
  }
}

TEST(FileSet, WhoseTemporaryFilesAreGoneReplacesNothing) {
  const Scratch scratch;
  Files::FileSet set(Files::realDisk(), scratch.folder / "import.journal");
  set.write(scratch.folder / "marks.xml", "new");
  for (const auto& entry : std::filesystem::directory_iterator(scratch.folder)) std::filesystem::remove(entry.path());
  EXPECT_THAT(sentenceOf<Files::DiskError>([&] { set.commit(); }), HasSubstr("was deleted by another program"));
  EXPECT_TRUE(std::filesystem::is_empty(scratch.folder));
}

TEST(FileSet, IsCompleteWhereTheFolderOfItsFilesIsGone) {
  const Scratch scratch;
  const auto left = scratch.folder / "import.journal";
  put(left, std::string("kiln-file-set 1\ngone/.kiln-1-1.tmp") + '\0' + "gone/index.flo" + '\0');
  Files::completeFileSet(Files::realDisk(), left);
  EXPECT_TRUE(std::filesystem::is_empty(scratch.folder));
}

TEST(FileSet, JournalThatCannotBeSetAsideIsToldAndLeft) {
  for (const int failing : {4, 5}) {  // finding a name, and renaming
    ModelDisk model;
    model.place(journal, "damaged");
    FailingDisk disk(model);
    disk.failing = failing;
    EXPECT_THAT(sentenceOf<Files::DiskError>([&] { Files::completeFileSet(disk, journal); }), HasSubstr("Delete it"));
    EXPECT_EQ(model.seen(), (Contents{{journal, "damaged"}}));
  }
}

TEST(FileSet, JournalsThatAreRefusedAreAllKept) {
  ModelDisk disk;
  for (const char* bytes : {"one", "two"}) {
    disk.place(journal, bytes);
    EXPECT_THROW(Files::completeFileSet(disk, journal), Files::DiskError);
  }
  EXPECT_EQ(disk.seen(),
            (Contents{{home / "import.journal.refused-1", "one"}, {home / "import.journal.refused-2", "two"}}));
}

}  // namespace
