// Cleanup of the user's data folders when the preferences open.
#include "tests/files/forwarding_disk.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <set>

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

// Written before its overlay, by a process that was killed then.
TEST_F(UserFolders, LoseThePictureOfAnOverlayThatDidNotCome) {
  const auto folder = make("profile/overlays");
  writeFile(folder / ".kiln-new-00001.opa", "");
  writeFile(folder / "00001.bmp", "picture");
  writeFile(folder / ".kiln-new-00002.opa", "");
  writeFile(folder / "00002.bmp", "picture of an overlay that came");
  writeFile(folder / "00002.opa", "overlay");
  open();
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename().string());
  EXPECT_EQ(names, (std::set<std::string>{"00002.bmp", "00002.opa"}));
}

TEST_F(UserFolders, AreNotTidiedWhileAnotherProgramIsChangingThem) {
  const auto folder = make("profile/overlays");
  writeFile(folder / ".kiln-aside-00001.opa", "overlay");
  // The files of an import on another machine look as if their process had died.
  const std::filesystem::path temporaries[] = {home.path / left, home.path / "profile" / left, folder / left};
  for (const auto& file : temporaries) writeFile(file, "finished");
  {
    const Files::HomeLock lock(Files::realDisk(), home.path);
    auto options = builtOptions();
    options.home = home.path;
    options.longestWait = {};
    const Testing::World world(options);
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "00001.opa"));
  for (const auto& file : temporaries) EXPECT_TRUE(std::filesystem::exists(file)) << file;
  open();
  EXPECT_TRUE(std::filesystem::exists(folder / "00001.opa"));
  for (const auto& file : temporaries) EXPECT_FALSE(std::filesystem::exists(file)) << file;
}

// A person's own, or an overlay whose record was lost.
TEST_F(UserFolders, KeepOverlaysAndPicturesThatNoIndexLists) {
  const auto folder = make("profile/overlays");
  for (const char* name : {"00001.opa", "00002.bmp", "form.pdf", "ovlNmFl.flo"}) writeFile(folder / name, "");
  open();
  for (const char* name : {"00001.opa", "00002.bmp", "form.pdf"})
    EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
}

TEST_F(UserFolders, OpenWhereAFolderStandsInPlaceOfAnOverlayThatWasSetAside) {
  const auto folder = make("profile/overlays");
  writeFile(folder / ".kiln-aside-00001.opa", "overlay");
  writeFile(folder / ".kiln-aside-", "");
  make("profile/overlays/00001.opa");
  open();
  EXPECT_TRUE(std::filesystem::exists(folder / ".kiln-aside-00001.opa"));
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

// A disk on which the watermark files of a folder cannot be read.
class UnreadableDisk final : public ForwardingDisk {
 public:
  UnreadableDisk(std::string folderName, std::errc why) : name(std::move(folderName)), reason(why) {}

  std::string read(const Path& file, std::size_t limit) override {
    if (file.parent_path().filename() == name && file.extension() == ".xml")
      throw Files::DiskError(file, "read", std::make_error_code(reason));
    return disk.read(file, limit);
  }

 private:
  const std::string name;
  const std::errc reason;
};

TEST_F(UserFolders, TellTheHostOfFilesThatCouldNotBeReadButNotOfForbiddenLocalData) {
  const auto unreadWith = [this](const std::string& folder, std::errc reason) {
    UnreadableDisk disk(folder, reason);
    auto options = builtOptions();
    options.home = home.path;
    options.disk = &disk;
    const Testing::World world(options);
    return world.preferences.unread();
  };
  writeFile(make("localdata/a") / "ZVeffect.xml", "<Watermarks/>");
  writeFile(make("user") / "ZVeffect.xml", "<Watermarks/>");
  EXPECT_EQ(unreadWith("elsewhere", std::errc::io_error), "");
  EXPECT_EQ(unreadWith("a", std::errc::permission_denied), "");
  EXPECT_NE(unreadWith("a", std::errc::io_error).find("cannot be read"), std::string::npos);
  EXPECT_NE(unreadWith("user", std::errc::permission_denied).find("cannot be read"), std::string::npos);
  EXPECT_NE(unreadWith("user", std::errc::io_error).find("cannot be read"), std::string::npos);
}

}  // namespace
