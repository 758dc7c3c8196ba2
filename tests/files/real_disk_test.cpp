#include "files/whole_file.h"
#include "scratch.h"

#include <gtest/gtest.h>

namespace {

TEST(RealDisk, ReadsNoMoreThanItMay) {
  const Scratch scratch;
  put(scratch.folder / "ten", "0123456789");
  EXPECT_EQ(Files::realDisk().read(scratch.folder / "ten", 10), "0123456789");
  EXPECT_THROW(Files::realDisk().read(scratch.folder / "ten", 9), Files::DiskError);
}

TEST(RealDisk, SaysWhichFileAndWhy) {
  const Scratch scratch;
  const auto none = scratch.folder / "none";
  EXPECT_EQ(sentenceOf<Files::DiskError>([&] { Files::realDisk().read(none, 10); }),
            Files::shownPath(none) + " cannot be read: there is no such file or folder.");
  EXPECT_EQ(sentenceOf<Files::DiskError>([&] { Files::realDisk().read(scratch.folder, 10); }),
            Files::shownPath(scratch.folder) + " cannot be read: it is a folder.");
}

TEST(RealDisk, CreatesNoFileWhereThereIsOne) {
  const Scratch scratch;
  put(scratch.folder / "there", "another program's");
  EXPECT_THROW(Files::realDisk().create(scratch.folder / "there", scratch.folder / "marks.xml"), Files::DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "there"), "another program's");
}

TEST(RealDisk, RemovesFilesOnly) {
  const Scratch scratch;
  put(scratch.folder / "file", "");
  EXPECT_TRUE(Files::realDisk().remove(scratch.folder / "file"));
  EXPECT_FALSE(Files::realDisk().remove(scratch.folder / "file"));
  EXPECT_THROW(Files::realDisk().remove(scratch.folder), Files::DiskError);
}

TEST(RealDisk, MakesAFolderThatIsThereOrNot) {
  const Scratch scratch;
  Files::realDisk().createFolder(scratch.folder / "new");
  Files::realDisk().createFolder(scratch.folder / "new");
  EXPECT_EQ(Files::realDisk().kind(scratch.folder / "new"), Files::EntryKind::folder);
  put(scratch.folder / "file", "");
  EXPECT_THROW(Files::realDisk().createFolder(scratch.folder / "file"), Files::DiskError);
}

TEST(RealDisk, TakesNamesOfEveryScript) {
  const Scratch scratch;
  const auto path = scratch.folder / Files::pathFromText(u"Entw\u00FCrfe \u4E0B\u66F8\u304D \U0001F5A8.xml");
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), path, "bytes"));
  EXPECT_EQ(Files::realDisk().read(path, 100), "bytes");
  ASSERT_EQ(Files::realDisk().entries(scratch.folder).size(), 1u);
  EXPECT_EQ(Files::realDisk().entries(scratch.folder).front().name, path.filename());
}

TEST(RealDisk, TakesLongPaths) {
  const Scratch scratch;
  auto folder = scratch.folder;
  for (int i = 0; i < 4; ++i) {
    folder /= std::string(90, 'a');
    Files::realDisk().createFolder(folder);
  }
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_FALSE(Files::replaceWhole(Files::realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_EQ(Files::realDisk().entries(folder).size(), 1u);
  EXPECT_TRUE(Files::realDisk().remove(folder / "marks.xml"));
}

// A NUL would truncate the path and name another file.
TEST(RealDisk, RefusesAZeroInAName) {
  const Scratch scratch;
  put(scratch.folder / "other", "a person's own");
  const auto path = scratch.folder / Files::pathFromText(std::u16string(u"other\0.xml", 10));
  EXPECT_EQ(Files::realDisk().kind(path), Files::EntryKind::none);
  EXPECT_THROW(Files::realDisk().read(path, 100), Files::DiskError);
  EXPECT_THROW(Files::realDisk().remove(path), Files::DiskError);
  EXPECT_THROW(Files::replaceWhole(Files::realDisk(), path, "bytes"), Files::DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "other"), "a person's own");
}

}  // namespace
