// Cleanup of the user's data folders when the preferences open.
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Testing::builtOptions;
using Testing::writeFile;

// Left by a dead process: PIDs are smaller.
constexpr const char* left = ".kiln-2147483646-1.tmp";

class UserFolders : public testing::Test {
 protected:
  std::filesystem::path make(const std::filesystem::path& folder) {
    std::filesystem::create_directories(home.path / folder);
    return home.path / folder;
  }
  void open() {
    auto options = builtOptions();
    options.home = home.path;
    const Testing::World world(options);
    EXPECT_TRUE(world.face.failures.empty());
  }

  Testing::TemporaryFolder home;
};

TEST_F(UserFolders, LoseTheTemporaryFilesOfProcessesThatDied) {
  const char* const folders[] = {"user", "profile/overlays", "localdata", "localdata/a", "localdata/a/overlays"};
  for (const char* folder : folders) writeFile(make(folder) / left, "half");
  open();
  for (const char* folder : folders) EXPECT_FALSE(std::filesystem::exists(home.path / folder / left)) << folder;
}

TEST_F(UserFolders, GetBackWhatWasSetAside) {
  for (const char* folder : {"profile/overlays", "localdata/a/overlays"}) {
    writeFile(make(folder) / ".kiln-aside-00001.opa", "overlay");
    writeFile(home.path / folder / ".kiln-aside-00001.bmp", "picture");
  }
  open();
  for (const char* folder : {"profile/overlays", "localdata/a/overlays"}) {
    EXPECT_TRUE(std::filesystem::exists(home.path / folder / "00001.opa")) << folder;
    EXPECT_TRUE(std::filesystem::exists(home.path / folder / "00001.bmp")) << folder;
  }
}

TEST_F(UserFolders, KeepEveryOtherFile) {
  const auto folder = make("profile/overlays");
  for (const char* name : {"00001.opa", ".kiln-x.tmp", "form.tmp", ".kiln-aside"}) writeFile(folder / name, "kept");
  writeFile(make("elsewhere") / left, "not in a folder of ours");
  open();
  for (const char* name : {"00001.opa", ".kiln-x.tmp", "form.tmp", ".kiln-aside"})
    EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
  EXPECT_TRUE(std::filesystem::exists(home.path / "elsewhere" / left));
}

TEST_F(UserFolders, ThatAreNoFoldersKeepNothingFromOpening) {
  writeFile(home.path / "localdata", "a file");
  make("profile");
  writeFile(home.path / "profile" / "overlays", "a file");
  open();
}

}  // namespace
