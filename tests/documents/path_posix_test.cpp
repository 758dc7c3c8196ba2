// Symbolic links, and backslashes, which are ordinary characters in POSIX names.
#include "files_world.h"

#include <gtest/gtest.h>

using namespace Refhost;
namespace fs = std::filesystem;
using Texts = std::vector<std::u16string>;

namespace {

TEST(Path, KeepsABackslashInAName) { EXPECT_EQ(joined("a", u"b\\c"), u"a/b\\c"); }

TEST(Path, ListsLinksLikeWhatTheyLeadTo) {
  const FilesWorld world;
  const Scratch elsewhere;
  fs::create_directory(world.scratch.folder / "inside");
  put(world.scratch.folder / "file", "");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "outside");
  fs::create_symlink("file", world.scratch.folder / "link");
  EXPECT_EQ(textsOf(world.path(u"")->list(u"*")), Texts({u"file", u"inside", u"link", u"outside"}));
  EXPECT_EQ(textsOf(world.path(u"")->list(u"out*")), Texts({u"outside"}));
}

TEST(Path, ListsAFolderOnceHoweverManyLinksLeadToIt) {
  const FilesWorld world;
  const Scratch elsewhere;
  fs::create_directory(world.scratch.folder / "inside");
  fs::create_directory_symlink("inside", world.scratch.folder / "a");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "b");
  fs::create_directory_symlink("b", world.scratch.folder / "c");
  EXPECT_EQ(textsOf(world.path(u"")->list(u"*")), Texts({u"b", u"inside"}));
}

// Counts the folders below a path.
int countFolders(Kiln::Services::Path& path) {
  int folders = 0;
  const auto names = path.list(u"*");
  for (std::int32_t i = 0; i < names->count(); ++i)
    if (const auto entry = path.join(names->at(i)); entry->isFolder()) folders += 1 + countFolders(*entry);
  return folders;
}

TEST(Path, EndsARecursiveWalkThatLinksLeadBack) {
  const FilesWorld world;
  const Scratch elsewhere;
  fs::create_directories(world.scratch.folder / "a" / "b");
  fs::create_directory_symlink(world.scratch.folder, world.scratch.folder / "self");
  fs::create_directory_symlink(world.scratch.folder.parent_path(), world.scratch.folder / "a" / "b" / "up");
  fs::create_directory_symlink("/", world.scratch.folder / "a" / "root");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "a" / "outside");
  fs::create_directory_symlink(world.scratch.folder, elsewhere.folder / "back");
  EXPECT_EQ(countFolders(*world.path(u"")), 3) << "a, a/b, a/outside";
}

TEST(Path, ThatIsALinkToAFolderIsListed) {
  const FilesWorld world;
  const Scratch elsewhere;
  put(elsewhere.folder / "file", "");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "data");
  EXPECT_EQ(textsOf(world.path(u"data")->list(u"*")), Texts({u"file"}));
}

}  // namespace
