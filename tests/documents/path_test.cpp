#include "files_world.h"
#include "host/object.h"
#include "tests/files/failing_disk.h"
#include "tests/files/model_disk.h"

#include <gtest/gtest.h>

using namespace Refhost;
namespace fs = std::filesystem;
using Texts = std::vector<std::u16string>;

namespace {

// Converts to this system's separators.
std::u16string native(std::u16string text) {
  std::replace(text.begin(), text.end(), u'/', char16_t{fs::path::preferred_separator});
  return text;
}

TEST(Path, JoinsOneNameOrMore) {
  EXPECT_EQ(joined("a", u"b"), native(u"a/b"));
  EXPECT_EQ(joined("a/", u"b/c.xml"), native(u"a/b/c.xml"));
  EXPECT_EQ(joined("a", u""), u"a");
  EXPECT_EQ(joined("a", u"b/"), native(u"a/b"));
  EXPECT_EQ(joined("/", u"b"), native(u"/b"));
  EXPECT_EQ(joined("", u"b"), u"b");
}

// The joined path is always below, even if the name looks absolute.
TEST(Path, JoinsANameThatLooksLikeAWholePath) { EXPECT_EQ(joined("a", u"/etc//b"), native(u"a/etc/b")); }

TEST(Path, HasAFolderAndALastPart) {
  const FilesWorld world;
  const auto path = makePath(world.files, "a/b.c/d.xml/");
  EXPECT_EQ(path->lastPart().view(), u"d.xml");
  EXPECT_EQ(path->folder()->text().view(), native(u"a/b.c"));
  EXPECT_EQ(path->folder()->lastPart().view(), u"b.c");
}

TEST(Path, KnowsFilesAndFolders) {
  const FilesWorld world;
  put(world.scratch.folder / "file", "");
  EXPECT_TRUE(world.path(u"")->isFolder());
  EXPECT_TRUE(world.path(u"file")->exists());
  EXPECT_FALSE(world.path(u"file")->isFolder());
  EXPECT_FALSE(world.path(u"none")->exists());
  EXPECT_FALSE(makePath(world.files, {})->exists());
}

TEST(Path, ListsByTheUnitsOfNames) {
  const FilesWorld world;
  // By code points U+FF21 comes before U+1F5A8; by units it comes after its surrogates.
  for (const auto name : {u"b", u"C", u"a10", u"a2", u"\uFF21", u"\U0001F5A8", u".hidden"})
    put(world.scratch.folder / Files::pathFromText(name), "");
  fs::create_directory(world.scratch.folder / "d");
  EXPECT_EQ(textsOf(world.path(u"")->list(u"*")),
            Texts({u".hidden", u"C", u"a10", u"a2", u"b", u"d", u"\U0001F5A8", u"\uFF21"}));
  EXPECT_EQ(textsOf(world.path(u"")->list(u"?")), Texts({u"C", u"b", u"d", u"\uFF21"}));
  EXPECT_EQ(textsOf(world.path(u"")->list(u"a*")), Texts({u"a10", u"a2"}));
}

TEST(Path, ListsNothingOfWhatIsNoFolder) {
  const FilesWorld world;
  put(world.scratch.folder / "file", "");
  EXPECT_EQ(world.path(u"file")->list(u"*")->count(), 0);
  EXPECT_EQ(world.path(u"none")->list(u"*")->count(), 0);
}

TEST(Path, MakesAllFoldersOnTheWay) {
  const FilesWorld world;
  world.path(u"a/b/c")->createFolder();
  EXPECT_TRUE(world.path(u"a/b/c")->isFolder());
  world.path(u"a/b/c")->createFolder();
  put(world.scratch.folder / "file", "");
  EXPECT_THROW(world.path(u"file/b")->createFolder(), Kiln::Exception);
  EXPECT_THROW(world.path(u"file")->createFolder(), Kiln::Exception);
}

TEST(Path, TellsOfWhatItRemoved) {
  const FilesWorld world;
  fs::create_directory(world.scratch.folder / "user");
  put(world.scratch.folder / "user" / "file", "");
  EXPECT_TRUE(world.path(u"user/file")->remove());
  EXPECT_FALSE(world.path(u"user/file")->remove());
  EXPECT_EQ(world.events, std::vector<std::string>{"delete path=user/file"});
  EXPECT_THROW(world.path(u"user")->remove(), Kiln::Exception);
}

TEST(Path, RemovesForGood) {
  ModelDisk disk;
  disk.place("home/file", "bytes");
  const FilesWorld world(disk);
  EXPECT_TRUE(makePath(world.files, "home/file")->remove());
  EXPECT_EQ(disk.afterPowerLoss(), std::set<ModelDisk::Contents>({ModelDisk::Contents()}));
}

TEST(Path, FlushesTheFolderOfEachFolderThatItMakes) {
  FailingDisk disk(Files::realDisk());
  const FilesWorld world(disk);
  world.path(u"a/b")->createFolder();
  EXPECT_EQ(disk.operations, 7);  // look for three folders, make and flush two
}

TEST(Path, CopiesAFileWhole) {
  const FilesWorld world;
  put(world.scratch.folder / "from", "twelve bytes");
  put(world.scratch.folder / "to", "what was there before, and is longer");
  world.path(u"from")->copyTo(world.path(u"to"));
  world.path(u"from")->copyTo(world.path(u"from"));
  EXPECT_EQ(contentOf(world.scratch.folder / "to"), "twelve bytes");
  EXPECT_EQ(contentOf(world.scratch.folder / "from"), "twelve bytes");
  EXPECT_EQ(world.events, std::vector<std::string>{"write path=to bytes=12"});
  EXPECT_THROW(world.path(u"none")->copyTo(world.path(u"to")), Kiln::Exception);
  EXPECT_EQ(contentOf(world.scratch.folder / "to"), "twelve bytes");
}

TEST(Path, SaysWhyACopyFailed) {
  FailingDisk disk(Files::realDisk());
  const FilesWorld world(disk);
  put(world.scratch.folder / "from", "bytes");
  disk.failing = 5;  // read, look for a journal, examine the target and the temporary name, create
  const std::string sentence = sentenceOf<Kiln::Exception>([&] { world.path(u"from")->copyTo(world.path(u"to")); });
  EXPECT_EQ(sentence, Files::shownPath(world.scratch.folder / "to") +
                          " cannot be written: the disk is full; free some space and try again.");
  EXPECT_TRUE(world.events.empty());
}

TEST(Path, IsTracedInFullOutsideTheHome) {
  const FilesWorld world;
  const auto outside = world.scratch.folder.parent_path() / "elsewhere" / "file";
  EXPECT_EQ(tracedPath(world.files, outside), Formats::toUtf16(outside.generic_string()));
  EXPECT_EQ(tracedPath(world.files, world.scratch.folder / "user" / "x" / ".." / "file"), u"user/file");
  // Another folder with the home's path as a prefix.
  EXPECT_EQ(tracedPath(world.files, world.scratch.folder.string() + "x/file"),
            Formats::toUtf16(world.scratch.folder.generic_string() + "x/file"));
}

TEST(Path, OfAnotherHostIsRefused) {
  class Foreign final : public Kiln::Services::Path {
   public:
    Kiln::WString text() override { return {}; }
    Kiln::SmartPtr<Kiln::Services::Path> join(Kiln::WStringView) override { return {}; }
    Kiln::SmartPtr<Kiln::Services::Path> folder() override { return {}; }
    Kiln::WString lastPart() override { return {}; }
    bool exists() override { return false; }
    bool isFolder() override { return false; }
    Kiln::SmartPtr<Kiln::Services::TextList> list(Kiln::WStringView) override { return {}; }
    void createFolder() override {}
    bool remove() override { return false; }
    void copyTo(Kiln::SmartPtr<Kiln::Services::Path>) override {}
  };
  EXPECT_THROW(nativePath(make<Foreign>(), "Host::file"), Kiln::Exception);
}

TEST(PathText, KeepsUnpairedSurrogates) {
  const std::u16string text = {u'a', 0xD800, u'b', 0xDC00};
  EXPECT_EQ(Files::pathText(Files::pathFromText(text)), text);
}

TEST(Pattern, StarAndQuestionMark) {
  EXPECT_TRUE(fits(u"", u""));
  EXPECT_TRUE(fits(u"", u"*"));
  EXPECT_FALSE(fits(u"", u"?"));
  EXPECT_TRUE(fits(u"marks.xml", u"*.xml"));
  EXPECT_TRUE(fits(u"a.xml.xml", u"*.xml"));
  EXPECT_FALSE(fits(u"a.xmlx", u"*.xml"));
  EXPECT_TRUE(fits(u"01234.opa", u"?????.op?"));
  EXPECT_FALSE(fits(u"1234.opa", u"?????.opa"));
  EXPECT_TRUE(fits(u"abcbcd", u"a*bcd"));
  EXPECT_FALSE(fits(u"abc", u"ab"));
  EXPECT_FALSE(fits(u"ab", u"abc"));
  EXPECT_FALSE(fits(u"ABC", u"abc"));
}

// The worst case is quadratic, not exponential.
TEST(Pattern, ThatAlmostFitsManyTimesIsToldSoon) {
  std::u16string pattern;
  for (int i = 0; i < 60; ++i) pattern += u"*a";
  EXPECT_FALSE(fits(std::u16string(255, u'a') + u"b", pattern + u"c"));
}

}  // namespace
