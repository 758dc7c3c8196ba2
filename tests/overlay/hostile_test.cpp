// Indexes that no store has written, and folders that cannot be read or written.
#include "overlay_home.h"
#include "tests/files/forwarding_disk.h"
#include "tests/support/growth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class HostileIndex : public testing::Test {
 protected:
  void putIndex(const std::string& bytes) {
    std::filesystem::create_directories(home.userFolder());
    Testing::writeFile(OverlayHome::index(home.userFolder()), bytes);
  }

  OverlayHome home;
  OverlayStore world{home.folder.path};
};

TEST_F(HostileIndex, OfRandomBytesListsNothing) {
  std::mt19937 random(11);
  std::string bytes(154 * 500, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  putIndex(bytes);
  EXPECT_EQ(world.open()->count(), 0);
  EXPECT_THAT(world.face.failures, IsEmpty());
  EXPECT_EQ(home.userIndex(), bytes);
}

TEST_F(HostileIndex, OfOneByteTooFewListsNothing) {
  OverlayHome::putFile(home.userFolder(), u"00001.opa");
  putIndex(recordBytes(u"one", u"00001.opa").substr(0, 153));
  EXPECT_EQ(world.open()->count(), 0);
  EXPECT_THAT(world.face.failures, IsEmpty());
}

// Notes how much is asked for at most.
class ReadingDisk : public ForwardingDisk {
 public:
  std::string read(const Path& file, std::size_t limit) override {
    most = std::max(most, limit);
    return ForwardingDisk::read(file, limit);
  }

  std::size_t most = 0;
};

TEST_F(HostileIndex, OfAHundredMegabytesIsToldUnreadAndNeverWrittenOver) {
  std::filesystem::create_directories(home.userFolder());
  const auto index = OverlayHome::index(home.userFolder());
  Testing::writeFile(index, "");
  std::filesystem::resize_file(index, 100'000'000);
  ReadingDisk disk;
  OverlayStore watched(home.folder.path, disk);
  const auto store = watched.open();
  EXPECT_GT(disk.most, 0U);
  EXPECT_LT(disk.most, 100'000'000U);
  EXPECT_EQ(store->count(), 0);
  EXPECT_THAT(watched.face.failures,
              ElementsAre(AllOf(
                  HasSubstr("ovlNmFl.flo"),
                  EndsWith("It is not written over: mend it or move it elsewhere, and open the preferences again."))));
  try {
    store->addOverlay(u"new");
    FAIL();
  } catch (const Kiln::Exception& problem) {
    EXPECT_EQ(problem.what(), watched.face.failures.front());
  }
  EXPECT_NO_THROW(store->refresh());
  store->save();
  EXPECT_EQ(std::filesystem::file_size(index), 100'000'000U);
}

TEST_F(HostileIndex, OfMoreOverlaysThanAnybodyHasIsTold) {
  putIndex(std::string(154 * 100'000, 'x'));
  world.open();
  EXPECT_THAT(world.face.failures, IsEmpty());
  putIndex(std::string(154 * 100'001, 'x'));
  world.open();
  EXPECT_THAT(
      world.face.failures,
      ElementsAre(
          "The overlay index " + OverlayHome::index(home.userFolder()).string() +
          " lists more than 100000 overlays. It is not written over: mend it or move it elsewhere, and open the "
          "preferences again."));
}

TEST_F(HostileIndex, OfManyNamesForOneFileIsReadInTimeLinearInIt) {
  EXPECT_TRUE(Testing::growsLinearly(3'000, [this](int count) {
    OverlayHome::putFile(home.userFolder(), u"00001.opa");
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += recordBytes(Formats::toUtf16("form " + std::to_string(i)), u"00001.opa");
    putIndex(bytes);
    return [this, count] {
      const auto store = world.open();
      EXPECT_EQ(store->count(), count);
      store->removeOverlay(u"00001.opa", false);
      store->save();
      EXPECT_EQ(home.userIndex(), "");
    };
  }));
}

TEST_F(HostileIndex, OfTheLocalDataIsLeftAloneWithoutAWord) {
  const auto index = OverlayHome::index(home.localFolder("a"));
  std::filesystem::create_directories(index);  // a folder where a file should be
  home.putLocal("b", {{u"theirs", u"00001.opa"}});
  const auto store = world.open();
  EXPECT_THAT(OverlayStore::records(*store), ElementsAre("theirs=00001.opa"));
  EXPECT_THAT(world.face.failures, IsEmpty());
  store->addOverlay(u"new");
  std::filesystem::create_directories(home.userFolder());
  store->save();
  EXPECT_TRUE(std::filesystem::is_directory(index));
}

TEST_F(HostileIndex, HasUnpairedSurrogatesThatAreKept) {
  const std::u16string name = {0xDC00, u'a', 0xD800};
  home.putUser({{name, u"00001.opa"}});
  const auto store = world.open();
  EXPECT_EQ(store->findByLabel(name, false), 0);
  store->addOverlay(u"new");
  store->save();
  EXPECT_EQ(home.userIndex().substr(0, 154), recordBytes(name, u"00001.opa"));
}

TEST_F(HostileIndex, InAHomeWithoutAProfileIsNoIndexAndOverlaysCannotBeKept) {
  world.set(u"kilnworks.user.userprofile", u"");
  const auto store = world.open();
  EXPECT_THAT(world.face.failures, IsEmpty());
  try {
    store->addOverlay(u"new");
    FAIL();
  } catch (const Kiln::Exception& problem) {
    EXPECT_STREQ(problem.what(), "Overlays cannot be kept: the host setting kilnworks.user.userprofile is empty.");
  }
}

// A disk on which folders cannot be listed.
class UnlistableDisk final : public ForwardingDisk {
 public:
  std::vector<Files::Entry> entries(const Path& folder) override {
    throw Files::DiskError(folder, "listed", std::make_error_code(std::errc::permission_denied));
  }
};

TEST(LocalDataThatCannotBeListed, LeavesTheUserTheirOwn) {
  OverlayHome home;
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  UnlistableDisk disk;
  OverlayStore world(home.folder.path, disk);
  EXPECT_THAT(OverlayStore::records(*world.open()), ElementsAre("mine=00001.opa"));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

// A disk on which local data can only be read.
class ReadOnlyLocalData final : public ForwardingDisk {
 public:
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    if (target.string().find("localdata") != std::string::npos)
      throw Files::DiskError(target, "written", std::make_error_code(std::errc::read_only_file_system));
    return disk.create(temporary, target);
  }
};

TEST(AReadOnlyIndexOfTheLocalData, KeepsTheUsersFromNothing) {
  OverlayHome home;
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}, {u"stale", u"00003.opa"}});
  std::filesystem::remove(home.localFolder("a") / "00003.opa");
  ReadOnlyLocalData disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  store->removeOverlay(u"00001.opa", false);
  store->save();
  EXPECT_EQ(home.userIndex(), "");

  store->removeOverlay(u"00002.opa", false);
  EXPECT_THROW(store->save(), Kiln::Exception);
}

}  // namespace
