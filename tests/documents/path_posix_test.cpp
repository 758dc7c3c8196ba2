// Symbolic links, and backslashes, which are ordinary characters in POSIX names.
#include "files_world.h"

#include <gtest/gtest.h>

using namespace Refhost;
namespace fs = std::filesystem;
using Texts = std::vector<std::u16string>;

namespace {

TEST(Path, KeepsABackslashInAName) { EXPECT_EQ(joined("a", u"b\\c"), u"a/b\\c"); }

TEST(Path, LeavesLinksToFoldersOutOfListings) {
  const FilesWorld world;
  const Scratch elsewhere;
  fs::create_directory(world.scratch.folder / "inside");
  put(world.scratch.folder / "file", "");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "outside");
  fs::create_symlink("file", world.scratch.folder / "link");
  EXPECT_EQ(textsOf(world.path(u"")->list(u"*")), Texts({u"file", u"inside", u"link"}));
}

TEST(Path, ThatIsALinkToAFolderIsListed) {
  const FilesWorld world;
  const Scratch elsewhere;
  put(elsewhere.folder / "file", "");
  fs::create_directory_symlink(elsewhere.folder, world.scratch.folder / "data");
  EXPECT_EQ(textsOf(world.path(u"data")->list(u"*")), Texts({u"file"}));
}

}  // namespace
