// An overlay file and its picture, which are replaced and deleted together.
#include "host/documents/captured.h"
#include "tests/files/failing_disk.h"
#include "tests/files/model_disk.h"
#include "tests/files/scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Refhost;
using Contents = ModelDisk::Contents;
using testing::AnyOf;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::filesystem::path folder = "/overlays";
const std::filesystem::path overlay = folder / "1.opa";
const std::filesystem::path picture = folder / "1.bmp";
const Contents oldPair = {{overlay, "old"}, {picture, "old picture"}};
const Contents newPair = {{overlay, "new"}, {picture, "new picture"}};

std::unique_ptr<ModelDisk> diskWith(const Contents& files) {
  auto disk = std::make_unique<ModelDisk>();
  disk->createFolder(folder);
  for (const auto& [path, bytes] : files) disk->place(path, bytes);
  return disk;
}

// The files in a folder after it was opened, except temporary ones.
Contents opened(const Contents& files) {
  const auto disk = diskWith(files);
  putAllBack(*disk, folder);
  Contents left = disk->seen();
  std::erase_if(left, [](const auto& file) { return file.first.extension() == ".tmp"; });
  return left;
}

// Runs the work; returns all possible contents of the folder after a loss of power during it and the next opening.
template <class Work>
std::set<Contents> afterLosses(const Contents& before, const Work& work) {
  const auto disk = diskWith(before);
  std::set<Contents> left;
  disk->look = [&](const std::set<Contents>& states) {
    for (const Contents& state : states) left.insert(opened(state));
  };
  work(*disk);
  return left;
}

TEST(Captured, DestinationIsSetAsideUntilTheNewOneIsWhole) {
  const auto disk = diskWith(oldPair);
  EXPECT_TRUE(takeAway(*disk, overlay, true));
  EXPECT_EQ(disk->seen(), (Contents{{folder / ".kiln-aside-1.opa", "old"}, {picture, "old picture"}}));
  writeCaptured(*disk, overlay, "new", "new picture");
  EXPECT_EQ(disk->seen(), newPair);
}

TEST(Captured, DestinationIsPutBackWhereTheFolderIsOpenedBefore) {
  const auto disk = diskWith(oldPair);
  takeAway(*disk, overlay, true);
  EXPECT_EQ(opened(disk->seen()), oldPair);
}

TEST(Captured, PairIsOldOrNewWhenThePowerFailsWhileItIsReplaced) {
  const auto left = afterLosses(oldPair, [](ModelDisk& disk) {
    takeAway(disk, overlay, true);
    writeCaptured(disk, overlay, "new", "new picture");
  });
  EXPECT_THAT(left, UnorderedElementsAre(oldPair, newPair));
}

TEST(Captured, PairIsOldOrNewAlsoWhereNobodyRemovedTheOldOneFirst) {
  const auto left = afterLosses(oldPair, [](ModelDisk& disk) { writeCaptured(disk, overlay, "new", "new picture"); });
  EXPECT_THAT(left, UnorderedElementsAre(oldPair, newPair));
}

TEST(Captured, NewOverlayIsThereWithItsPictureOrNotAtAll) {
  const auto left = afterLosses({}, [](ModelDisk& disk) {
    writeCaptured(disk, overlay, "new", "new picture");
    EXPECT_EQ(disk.seen(), newPair);
  });
  EXPECT_THAT(left, UnorderedElementsAre(newPair, Contents()));
}

TEST(Captured, PictureOfNoOverlayThatNobodyWroteHereStays) {
  const Contents before = {{folder / "00007.bmp", "a person's own"}, {folder / "2.opa", "unlisted"}};
  const auto disk = diskWith(before);
  EXPECT_FALSE(hasToPutBack(*disk, folder));
  EXPECT_EQ(opened(before), before);
}

TEST(Captured, OverlayThatIsSetAsideIsKnown) {
  const auto disk = diskWith(oldPair);
  EXPECT_FALSE(isSetAside(*disk, overlay));
  takeAway(*disk, overlay, true);
  EXPECT_TRUE(isSetAside(*disk, overlay));
  EXPECT_TRUE(hasToPutBack(*disk, folder));
}

TEST(Captured, OverlayThatIsDeletedWhileItIsSetAsideDoesNotComeBack) {
  const auto disk = diskWith(oldPair);
  takeAway(*disk, overlay, true);
  EXPECT_TRUE(takeAway(*disk, picture, false));
  EXPECT_TRUE(takeAway(*disk, overlay, false));
  EXPECT_THAT(opened(disk->seen()), IsEmpty());
}

TEST(Captured, JobWithoutAPictureLeavesTheOneThatIsThere) {
  const auto disk = diskWith(oldPair);
  takeAway(*disk, overlay, true);
  writeCaptured(*disk, overlay, "new", {});
  EXPECT_EQ(disk->seen(), (Contents{{overlay, "new"}, {picture, "old picture"}}));
}

TEST(Captured, PairIsThereOrGoneWhenThePowerFailsWhileItIsDeleted) {
  const auto left = afterLosses(oldPair, [](ModelDisk& disk) {
    EXPECT_TRUE(takeAway(disk, picture, false));
    EXPECT_TRUE(takeAway(disk, overlay, false));
    EXPECT_THAT(disk.seen(), IsEmpty());
  });
  EXPECT_THAT(left, UnorderedElementsAre(oldPair, Contents()));
}

TEST(Captured, FileThatIsNoPictureOfAnOverlayIsRemovedAtOnce) {
  const auto disk = diskWith({{folder / "a.bmp", "alone"}, {folder / "b.opa", "alone"}, {folder / "c", "plain"}});
  for (const char* name : {"a.bmp", "b.opa", "c"}) EXPECT_TRUE(takeAway(*disk, folder / name, false)) << name;
  EXPECT_THAT(disk->seen(), IsEmpty());
  EXPECT_FALSE(takeAway(*disk, overlay, false));
  EXPECT_FALSE(takeAway(*disk, overlay, true));
}

TEST(Captured, PictureComesBackWhereItsOverlayCannotBeDeleted) {
  const Scratch scratch;
  const auto file = scratch.folder / "1.opa";
  const auto itsPicture = scratch.folder / "1.bmp";
  put(scratch.folder / "1.opa", "old");
  put(scratch.folder / "1.bmp", "old picture");
  FailingDisk disk(Files::realDisk());
  takeAway(disk, itsPicture, false);
  disk.operations = 0;
  disk.failing = 2;  // examine, remove
  EXPECT_THROW(takeAway(disk, file, false), Files::DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "1.opa"), "old");
  EXPECT_EQ(contentOf(scratch.folder / "1.bmp"), "old picture");
}

TEST(Captured, PairIsOldOrNewAtOnceWhicheverOperationFails) {
  for (int failing = 1;; ++failing) {
    const Scratch scratch;
    put(scratch.folder / "1.opa", "old");
    put(scratch.folder / "1.bmp", "old picture");
    const auto file = scratch.folder / "1.opa";
    takeAway(Files::realDisk(), file, true);
    FailingDisk disk(Files::realDisk());
    disk.failing = failing;
    try {
      writeCaptured(disk, file, "new", "new picture");
    } catch (const Files::DiskError&) {
    }
    const auto left = std::make_pair(contentOf(scratch.folder / "1.opa"), contentOf(scratch.folder / "1.bmp"));
    EXPECT_THAT(left, AnyOf(std::make_pair(std::string("old"), std::string("old picture")),
                            std::make_pair(std::string("new"), std::string("new picture"))))
        << failing;
    if (disk.operations < failing) break;
  }
}

TEST(Captured, OverlayOfAnyEndingIsPutBackWithItsPicture) {
  const std::filesystem::path form = folder / "form";
  const Contents before = {{form, "old"}, {folder / "form.bmp", "old picture"}};
  const auto disk = diskWith(before);
  disk->replace(form, folder / ".kiln-aside-form");
  disk->replace(folder / "form.bmp", folder / ".kiln-aside-form.bmp");
  EXPECT_EQ(opened(disk->seen()), before);
}

TEST(Captured, FolderThatIsNotThereIsNoneToPutBackInto) {
  ModelDisk disk;
  putAllBack(disk, "/none");
  EXPECT_THAT(disk.seen(), IsEmpty());
}

}  // namespace
