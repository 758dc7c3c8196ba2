#include "scratch.h"

#include "host/documents/whole_file.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

TEST(RealDisk, ReadsNoMoreThanItMay) {
  const Scratch scratch;
  put(scratch.folder / "ten", "0123456789");
  EXPECT_EQ(realDisk().read(scratch.folder / "ten", 10), "0123456789");
  EXPECT_THROW(realDisk().read(scratch.folder / "ten", 9), DiskError);
}

TEST(RealDisk, SaysWhichFileAndWhy) {
  const Scratch scratch;
  const auto none = scratch.folder / "none";
  EXPECT_EQ(sentenceOf<DiskError>([&] { realDisk().read(none, 10); }),
            shownPath(none) + " cannot be read: there is no such file or folder.");
  EXPECT_EQ(sentenceOf<DiskError>([&] { realDisk().read(scratch.folder, 10); }),
            shownPath(scratch.folder) + " cannot be read: it is a folder.");
}

TEST(RealDisk, CreatesNoFileWhereThereIsOne) {
  const Scratch scratch;
  put(scratch.folder / "there", "another program's");
  EXPECT_THROW(realDisk().create(scratch.folder / "there", scratch.folder / "marks.xml"), DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "there"), "another program's");
}

TEST(RealDisk, RemovesFilesOnly) {
  const Scratch scratch;
  put(scratch.folder / "file", "");
  EXPECT_TRUE(realDisk().remove(scratch.folder / "file"));
  EXPECT_FALSE(realDisk().remove(scratch.folder / "file"));
  EXPECT_THROW(realDisk().remove(scratch.folder), DiskError);
}

TEST(RealDisk, MakesAFolderThatIsThereOrNot) {
  const Scratch scratch;
  realDisk().createFolder(scratch.folder / "new");
  realDisk().createFolder(scratch.folder / "new");
  EXPECT_EQ(realDisk().kind(scratch.folder / "new"), EntryKind::folder);
  put(scratch.folder / "file", "");
  EXPECT_THROW(realDisk().createFolder(scratch.folder / "file"), DiskError);
}

TEST(RealDisk, TakesNamesOfEveryScript) {
  const Scratch scratch;
  const auto path = scratch.folder / pathFromText(u"Entw\u00FCrfe \u4E0B\u66F8\u304D \U0001F5A8.xml");
  EXPECT_TRUE(replaceWhole(realDisk(), path, "bytes"));
  EXPECT_EQ(realDisk().read(path, 100), "bytes");
  ASSERT_EQ(realDisk().entries(scratch.folder).size(), 1u);
  EXPECT_EQ(realDisk().entries(scratch.folder).front().name, path.filename());
}

TEST(RealDisk, TakesLongPaths) {
  const Scratch scratch;
  auto folder = scratch.folder;
  for (int i = 0; i < 4; ++i) {
    folder /= std::string(90, 'a');
    realDisk().createFolder(folder);
  }
  EXPECT_TRUE(replaceWhole(realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_FALSE(replaceWhole(realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_EQ(realDisk().entries(folder).size(), 1u);
  EXPECT_TRUE(realDisk().remove(folder / "marks.xml"));
}

// A NUL would truncate the path and name another file.
TEST(RealDisk, RefusesAZeroInAName) {
  const Scratch scratch;
  put(scratch.folder / "other", "a person's own");
  const auto path = scratch.folder / pathFromText(std::u16string(u"other\0.xml", 10));
  EXPECT_EQ(realDisk().kind(path), EntryKind::none);
  EXPECT_THROW(realDisk().read(path, 100), DiskError);
  EXPECT_THROW(realDisk().remove(path), DiskError);
  EXPECT_THROW(replaceWhole(realDisk(), path, "bytes"), DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "other"), "a person's own");
}

}  // namespace
