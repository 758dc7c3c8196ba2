#include "files_world.h"
#include "host/documents/stores.h"
#include "host/documents/text_list.h"
#include "tests/files/failing_disk.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

TEST(FileStore, StoresWhatWasWrittenTogether) {
  const FilesWorld world;
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->write("one ");
  store->write("two");
  EXPECT_FALSE(world.path(u"marks.xml")->exists());
  store->commit();
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "one two");
  EXPECT_EQ(store->readAll().view(), "one two");
  EXPECT_EQ(store->path()->lastPart().view(), u"marks.xml");
  EXPECT_EQ(world.events, std::vector<std::string>{"write path=marks.xml bytes=7"});
}

TEST(FileStore, StartsAnewAfterACommit) {
  const FilesWorld world;
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->write("one");
  store->commit();
  store->write("two");
  store->commit();
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "two");
  store->commit();
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "");
}

TEST(FileStore, LeavesTheFileWithoutACommit) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "old");
  fileStore(world.files, world.path(u"marks.xml"))->write("new");
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "old");
  EXPECT_TRUE(world.events.empty());
}

// The sentence of the refusal; empty when it is stored.
std::string failureOf(Kiln::Services::FileBackingStoreIO& store, std::string_view bytes) {
  return sentenceOf<Kiln::FileChanged>([&] {
    store.write(bytes);
    store.commit();
  });
}

TEST(FileStore, DoesNotReplaceWhatAnotherProgramHasWrittenSinceItWasRead) {
  const FilesWorld world;
  const auto file = world.scratch.folder / "marks.xml";
  put(file, "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  put(file, "theirs");
  EXPECT_EQ(failureOf(*store, "ours"),
            Files::shownPath(file) + " was changed by another program meanwhile; try again.");
  EXPECT_EQ(contentOf(file), "theirs");
  EXPECT_EQ(store->readAll().view(), "theirs");
  EXPECT_EQ(failureOf(*store, "theirs and ours"), "");
  EXPECT_EQ(contentOf(file), "theirs and ours");
}

TEST(FileStore, CompletesTheImportOfAProgramThatHasDiedSinceTheReading) {
  const FilesWorld world;
  const auto file = world.scratch.folder / "marks.xml";
  put(file, "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  put(world.scratch.folder / ".kiln-2147483646-1.tmp", "imported");
  put(world.scratch.folder / "import.journal",
      std::string("kiln-file-set 1\n.kiln-2147483646-1.tmp") + '\0' + "marks.xml" + '\0');
  EXPECT_EQ(failureOf(*store, "ours"),
            Files::shownPath(file) + " was changed by another program meanwhile; try again.");
  EXPECT_EQ(store->readAll().view(), "imported");
  EXPECT_EQ(failureOf(*store, "imported and ours"), "");
  EXPECT_EQ(contentOf(file), "imported and ours");
}

TEST(FileStore, ComparesWithTheFirstReading) {
  const FilesWorld world;
  const auto file = world.scratch.folder / "marks.xml";
  put(file, "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  put(file, "theirs");
  fileStore(world.files, world.path(u"marks.xml"))->readAll();
  EXPECT_NE(failureOf(*store, "ours"), "");
}

TEST(FileStore, DoesNotReplaceAFileThatWasNotThere) {
  const FilesWorld world;
  const auto path = world.path(u"marks.xml");
  EXPECT_FALSE(path->exists());
  put(world.scratch.folder / "marks.xml", "theirs");
  EXPECT_NE(failureOf(*fileStore(world.files, path), "ours"), "");
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "theirs");
}

TEST(FileStore, DoesNotBringBackAFileThatAnotherProgramHasDeleted) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  std::filesystem::remove(world.scratch.folder / "marks.xml");
  EXPECT_NE(failureOf(*store, "ours"), "");
  EXPECT_FALSE(std::filesystem::exists(world.scratch.folder / "marks.xml"));
}

TEST(FileStore, StoresWhatAnotherProgramHasWrittenAlready) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  put(world.scratch.folder / "marks.xml", "same");
  EXPECT_EQ(failureOf(*store, "same"), "");
}

TEST(FileStore, OfWhatWasReadInAnEarlierActionIsWrittenWithoutAQuestion) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->readAll();
  world.files.guard->endAction();
  put(world.scratch.folder / "marks.xml", "theirs");
  EXPECT_EQ(failureOf(*store, "ours"), "");
}

TEST(FileStore, KeepsTheHomeFromOthersAfterARefusalUntilItIsWritten) {
  const FilesWorld world;
  const auto lock = [&] { const Files::HomeLock attempt(Files::realDisk(), world.scratch.folder, {}); };
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  for (const bool isWritten : {true, false}) {
    store->readAll();
    put(world.scratch.folder / "marks.xml", isWritten ? "theirs" : "theirs again");
    EXPECT_NE(failureOf(*store, "ours"), "");
    EXPECT_THROW(lock(), Files::DiskError);
    if (isWritten)
      EXPECT_EQ(failureOf(*store, "ours"), "");
    else
      world.files.guard->endAction();
    lock();
  }
}

TEST(FileStore, SaysThatAnotherProgramIsChangingTheHome) {
  const FilesWorld world;
  world.files.guard->longestWait = {};
  put(world.scratch.folder / "marks.xml", "old");
  const Files::HomeLock lock(Files::realDisk(), world.scratch.folder);
  const auto path = world.path(u"marks.xml");
  const auto store = fileStore(world.files, path);
  EXPECT_EQ(store->readAll().view(), "old");
  store->write("new");
  const std::string busy = Files::shownPath(world.scratch.folder) + " is in use by another program; try again.";
  EXPECT_EQ(sentenceOf<Kiln::Exception>([&] { store->commit(); }), busy);
  EXPECT_EQ(sentenceOf<Kiln::Exception>([&] { path->remove(); }), busy);
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "old");
}

TEST(FileStore, TellsNothingWhereNothingChanges) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "same");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->write("same");
  store->commit();
  EXPECT_TRUE(world.events.empty());
}

TEST(FileStore, SaysWhyItCannotStore) {
  FailingDisk disk(Files::realDisk());
  const FilesWorld world(disk);
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  store->write("half");
  disk.failing = 5;  // examine, read, examine, create, write
  EXPECT_EQ(sentenceOf<Kiln::Exception>([&] { store->commit(); }),
            Files::shownPath(world.scratch.folder / "marks.xml") +
                " cannot be written: the disk is full; free some space and try again.");
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "old");
  EXPECT_TRUE(world.events.empty());

  store->write("whole");
  store->commit();
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "whole");
}

TEST(FileStore, ReadsNoFileThatIsNotThere) {
  const FilesWorld world;
  EXPECT_THROW(fileStore(world.files, world.path(u"none"))->readAll(), Kiln::Exception);
  EXPECT_THROW(fileStore(world.files, {}), Kiln::Exception);
}

TEST(FileStore, ReadsNoFileThatIsTooLarge) {
  const FilesWorld world;
  put(world.scratch.folder / "large", "");
  std::filesystem::resize_file(world.scratch.folder / "large", storeLimit);
  EXPECT_EQ(fileStore(world.files, world.path(u"large"))->readAll().size(), storeLimit);
  std::filesystem::resize_file(world.scratch.folder / "large", storeLimit + 1);
  const std::string sentence =
      sentenceOf<Kiln::Exception>([&] { fileStore(world.files, world.path(u"large"))->readAll(); });
  EXPECT_NE(sentence.find("it is larger than this host reads"), sentence.npos) << sentence;
}

TEST(ResourceStore, IsReadAndNeverWritten) {
  const Scratch scratch;
  put(scratch.folder / "marks.xml", "shipped");
  const auto store = resourceStore(scratch.folder / "marks.xml");
  EXPECT_EQ(store->readAll().view(), "shipped");
  EXPECT_THROW(store->write("new"), Kiln::Exception);
  EXPECT_THROW(store->commit(), Kiln::Exception);
  EXPECT_EQ(contentOf(scratch.folder / "marks.xml"), "shipped");
  EXPECT_THROW(resourceStore(scratch.folder / "none")->readAll(), Kiln::Exception);
}

TEST(MemoryStore, HoldsWhatWasCommitted) {
  const auto store = memoryStore("old");
  store->write("new");
  EXPECT_EQ(store->readAll().view(), "old");
  store->commit();
  EXPECT_EQ(store->readAll().view(), "new");
}

TEST(TextList, HasItsTextsInOrder) {
  const auto list = makeTextList({u"b", u"", u"a"});
  EXPECT_EQ(textsOf(list), std::vector<std::u16string>({u"b", u"", u"a"}));
  EXPECT_TRUE(list->at(-1).empty());
  EXPECT_TRUE(list->at(3).empty());
}

}  // namespace
