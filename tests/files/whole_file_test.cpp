#include "failing_disk.h"
#include "files/whole_file.h"
#include "model_disk.h"
#include "scratch.h"

#include <gtest/gtest.h>

namespace {

const std::filesystem::path folder = "home";
const std::filesystem::path file = folder / "marks.xml";
const std::string oldBytes = "the old content";
const std::string newBytes = "the new content, which is longer";

// A function that saves a file.
using Writer = void (*)(ModelDisk&, std::string_view);

// The possible defects of the file after a loss of power at any moment; empty when there are none.
std::set<std::string> damageBy(Writer save, ModelDisk& disk) {
  std::set<std::string> damage;
  bool isSaved = false;
  disk.look = [&](const std::set<ModelDisk::Contents>& states) {
    for (const ModelDisk::Contents& state : states) {
      const auto found = state.find(file);
      if (found == state.end())
        damage.insert("gone");
      else if (found->second != oldBytes && found->second != newBytes)
        damage.insert("neither the old nor the new content");
      else if (isSaved && found->second == oldBytes)
        damage.insert("the old content after saving");
    }
  };
  save(disk, newBytes);
  isSaved = true;
  disk.look(disk.afterPowerLoss());
  return damage;
}

std::set<std::string> damageBy(Writer save) {
  ModelDisk disk;
  disk.place(file, oldBytes);
  return damageBy(save, disk);
}

void writeAll(Files::Disk::File& to, std::string_view bytes, bool flushed) {
  to.write(bytes);
  if (flushed) to.sync();
  to.close();
}

const std::filesystem::path temporary = folder / "temporary";

void saveInPlace(ModelDisk& disk, std::string_view bytes) {
  writeAll(*disk.openInPlace(file), bytes, true);
  disk.syncFolder(folder);
}

void saveAfterRemoving(ModelDisk& disk, std::string_view bytes) {
  writeAll(*disk.create(temporary, file), bytes, true);
  disk.remove(file);
  disk.replace(temporary, file);
  disk.syncFolder(folder);
}

void saveWithoutFlushingTheFile(ModelDisk& disk, std::string_view bytes) {
  writeAll(*disk.create(temporary, file), bytes, false);
  disk.replace(temporary, file);
  disk.syncFolder(folder);
}

void saveWithoutFlushingTheFolder(ModelDisk& disk, std::string_view bytes) {
  writeAll(*disk.create(temporary, file), bytes, true);
  disk.replace(temporary, file);
}

void saveWhole(ModelDisk& disk, std::string_view bytes) { EXPECT_TRUE(Files::replaceWhole(disk, file, bytes)); }

using Damage = std::set<std::string>;

TEST(WholeFile, IsOldOrNewAfterALossOfPowerAtAnyMoment) { EXPECT_EQ(damageBy(saveWhole), Damage{}); }

TEST(WholeFile, LeavesOnlyItselfOnTheMedium) {
  ModelDisk disk;
  disk.place(file, oldBytes);
  Files::replaceWhole(disk, file, newBytes);
  EXPECT_EQ(disk.afterPowerLoss(), std::set<ModelDisk::Contents>({{{file, newBytes}}}));
}

TEST(WholeFile, IsOnTheMediumWhenItWasNotThereBefore) {
  ModelDisk disk;
  Files::replaceWhole(disk, file, newBytes);
  EXPECT_EQ(disk.afterPowerLoss(), std::set<ModelDisk::Contents>({{{file, newBytes}}}));
}

// A process that died between the rename and the flush of the folder leaves a file that may still be lost.
TEST(WholeFile, WithTheSameContentIsStillMadeSureOf) {
  ModelDisk disk;
  disk.place(file, oldBytes);
  saveWithoutFlushingTheFolder(disk, newBytes);
  ASSERT_GT(disk.afterPowerLoss().size(), 1u);
  EXPECT_FALSE(Files::replaceWhole(disk, file, newBytes));
  EXPECT_EQ(disk.afterPowerLoss(), std::set<ModelDisk::Contents>({{{file, newBytes}}}));
}

// The four classic mistakes: the model disk detects each of them, which validates the tests based on it.
TEST(ModelDisk, FindsWritingInPlace) {
  EXPECT_EQ(damageBy(saveInPlace), Damage{"neither the old nor the new content"});
}

TEST(ModelDisk, FindsRemovingFirst) { EXPECT_EQ(damageBy(saveAfterRemoving), Damage{"gone"}); }

TEST(ModelDisk, FindsAFileThatIsNotFlushed) {
  EXPECT_EQ(damageBy(saveWithoutFlushingTheFile), Damage{"neither the old nor the new content"});
}

TEST(ModelDisk, FindsAFolderThatIsNotFlushed) {
  EXPECT_EQ(damageBy(saveWithoutFlushingTheFolder), Damage{"the old content after saving"});
}

TEST(WholeFile, ReplacesAFileOfTheSystem) {
  const Scratch scratch;
  put(scratch.folder / "marks.xml", oldBytes);
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), scratch.folder / "marks.xml", newBytes));
  EXPECT_EQ(contentOf(scratch.folder / "marks.xml"), newBytes);
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"});
}

TEST(WholeFile, HoldsNothingAndEverything) {
  const Scratch scratch;
  std::string bytes(1 << 20, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * i >> 3);
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), scratch.folder / "a", bytes));
  EXPECT_EQ(contentOf(scratch.folder / "a"), bytes);
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), scratch.folder / "a", ""));
  EXPECT_EQ(contentOf(scratch.folder / "a"), "");
  EXPECT_FALSE(Files::replaceWhole(Files::realDisk(), scratch.folder / "a", ""));
}

TEST(WholeFile, ThatWouldNotChangeIsNotWritten) {
  const Scratch scratch;
  FailingDisk disk(Files::realDisk());
  const auto path = scratch.folder / "marks.xml";
  ASSERT_TRUE(Files::replaceWhole(disk, path, newBytes));
  disk.operations = 0;
  EXPECT_FALSE(Files::replaceWhole(disk, path, newBytes));
  EXPECT_EQ(disk.operations, 3);  // examine, read, and flush of the folder
  EXPECT_TRUE(Files::replaceWhole(disk, path, newBytes.substr(1)));
  EXPECT_EQ(contentOf(path), newBytes.substr(1));
}

// Every operation fails in turn.
TEST(WholeFile, IsOldOrNewWhicheverOperationFails) {
  int failures = 0;
  for (int failing = 1;; ++failing) {
    const Scratch scratch;
    const auto path = scratch.folder / "marks.xml";
    put(path, oldBytes);
    FailingDisk disk(Files::realDisk());
    disk.failing = failing;
    const std::string sentence = sentenceOf<Files::DiskError>([&] { Files::replaceWhole(disk, path, newBytes); });
    if (disk.operations < failing) {
      // examine, read, examine the temporary name, create, write, sync, close, replace, and the folder
      EXPECT_EQ(disk.operations, 9);
      break;
    }

    SCOPED_TRACE("operation " + std::to_string(failing));
    EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"}) << "a temporary file is left";
    if (sentence.empty()) {
      EXPECT_EQ(contentOf(path), newBytes);
      continue;
    }
    ++failures;
    EXPECT_NE(sentence.find("cannot be written: the disk is full; free some space and try again."), sentence.npos);
    EXPECT_TRUE(contentOf(path) == oldBytes || contentOf(path) == newBytes);
    disk.failing = 0;
    Files::replaceWhole(disk, path, newBytes);
    EXPECT_EQ(contentOf(path), newBytes);
  }
  EXPECT_EQ(failures, 7);  // all but the first two: an unreadable file is rewritten
}

TEST(WholeFile, IsOldWhenAFlushFailsAndTheFlushIsNotRetried) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, oldBytes);
  FailingDisk disk(Files::realDisk());
  disk.failing = 6;  // examine, read, examine, create, write, sync
  disk.reason = std::errc::io_error;
  EXPECT_THROW(Files::replaceWhole(disk, path, newBytes), Files::DiskError);
  EXPECT_EQ(contentOf(path), oldBytes);
  EXPECT_EQ(disk.operations, 7);  // after the flush only the removal of the temporary file
}

TEST(WholeFile, NeedsItsFolder) {
  const Scratch scratch;
  EXPECT_THROW(Files::replaceWhole(Files::realDisk(), scratch.folder / "none" / "marks.xml", newBytes),
               Files::DiskError);
  EXPECT_TRUE(namesIn(scratch.folder).empty());
}

TEST(WholeFile, DoesNotReplaceAFolder) {
  const Scratch scratch;
  std::filesystem::create_directory(scratch.folder / "marks.xml");
  EXPECT_THROW(Files::replaceWhole(Files::realDisk(), scratch.folder / "marks.xml", newBytes), Files::DiskError);
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"});
}

std::string temporaryOf(long process) { return ".kiln-" + std::to_string(process) + "-7.tmp"; }

constexpr long nobody = 2147483645;  // an unused PID

TEST(Sweep, RemovesWhatDeadProgramsLeft) {
  const Scratch scratch;
  put(scratch.folder / temporaryOf(nobody), "half a fi");
  put(scratch.folder / "marks.xml", oldBytes);
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"});
}

TEST(Sweep, LeavesWhatAProgramIsWriting) {
  const Scratch scratch;
  put(scratch.folder / temporaryOf(Files::processNumber()), "half a fi");
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  EXPECT_EQ(namesIn(scratch.folder).size(), 1u);
}

// PIDs are reused, so a running process proves nothing after a while.
TEST(Sweep, RemovesWhatIsTooOldToBeWritten) {
  const Scratch scratch;
  const auto stale = scratch.folder / temporaryOf(Files::processNumber());
  put(stale, "half a fi");
  std::filesystem::last_write_time(stale, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  EXPECT_TRUE(namesIn(scratch.folder).empty());
}

TEST(Sweep, TouchesNothingElse) {
  const Scratch scratch;
  const std::vector<std::string> others = {".kiln--1.tmp",         ".kiln-2147483645-.tmp",  ".kiln-2147483645-1.tmpx",
                                           ".kiln-2147483645.tmp", ".kiln-2147483645-a.tmp", "kiln-2147483645-1.tmp"};
  for (const std::string& name : others) put(scratch.folder / name, "a person's own");
  std::filesystem::create_directory(scratch.folder / temporaryOf(nobody));
  auto before = namesIn(scratch.folder);
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  EXPECT_EQ(namesIn(scratch.folder), before);
}

TEST(Sweep, OfNoFolderDoesNothing) {
  const Scratch scratch;
  put(scratch.folder / "file", "");
  Files::sweepTemporaries(Files::realDisk(), scratch.folder / "none");
  Files::sweepTemporaries(Files::realDisk(), scratch.folder / "file");
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"file"});
}

}  // namespace
