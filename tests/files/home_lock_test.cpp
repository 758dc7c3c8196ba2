#include "files/home_lock.h"
#include "forwarding_disk.h"
#include "scratch.h"

#include <gmock/gmock.h>

namespace {

using Files::HomeLock;
using testing::IsEmpty;

constexpr std::chrono::milliseconds noWait{0};

TEST(HomeLock, IsHadByOneAtATime) {
  const Scratch home;
  std::optional<HomeLock> first(std::in_place, Files::realDisk(), home.folder, noWait);
  EXPECT_EQ(sentenceOf<Files::DiskError>([&] { const HomeLock second(Files::realDisk(), home.folder, noWait); }),
            home.folder.string() + " is in use by another program; try again.");
  first.reset();
  const HomeLock second(Files::realDisk(), home.folder, noWait);
  EXPECT_THROW(HomeLock(Files::realDisk(), home.folder, noWait), Files::DiskError);
}

TEST(HomeLock, OfAnotherHomeIsAnotherOne) {
  const Scratch home;
  const Scratch other;
  const HomeLock first(Files::realDisk(), home.folder, noWait);
  const HomeLock second(Files::realDisk(), other.folder, noWait);
  EXPECT_THROW(HomeLock(Files::realDisk(), other.folder, noWait), Files::DiskError);
}

// A disk on which the other program gives the lock up at the third attempt.
class BusyDisk final : public ForwardingDisk {
 public:
  std::unique_ptr<Lock> tryLock(const Path& file, Missing missing) override {
    return ++attempts < 3 ? nullptr : disk.tryLock(file, missing);
  }
  int attempts = 0;
};

TEST(HomeLock, WaitsForTheOtherProgram) {
  const Scratch home;
  BusyDisk disk;
  const HomeLock lock(disk, home.folder);
  EXPECT_EQ(disk.attempts, 3);
}

TEST(HomeLock, OfAHomeWithoutAPlaceForItLocksNothing) {
  const Scratch home;
  put(home.folder / "file", "");
  std::filesystem::create_directory(home.folder / ".kiln-lock");
  for (const auto& folder : {home.folder / "none", home.folder / "file", home.folder}) {
    const HomeLock first(Files::realDisk(), folder, noWait);
    const HomeLock second(Files::realDisk(), folder, noWait);
  }
  EXPECT_EQ(namesIn(home.folder), (std::vector<std::string>{".kiln-lock", "file"}));
}

TEST(FileLock, OfAMissingFileMayBeRefused) {
  const Scratch scratch;
  EXPECT_THROW(Files::realDisk().tryLock(scratch.folder / "none", Files::Disk::Missing::refused), Files::DiskError);
  EXPECT_THAT(namesIn(scratch.folder), IsEmpty());
}

TEST(FileLock, IsWithWhoWritesTheFile) {
  const Scratch scratch;
  auto file = Files::realDisk().create(scratch.folder / "new", scratch.folder / "old");
  EXPECT_EQ(Files::realDisk().tryLock(scratch.folder / "new", Files::Disk::Missing::refused), nullptr);
  file->close();
  EXPECT_NE(Files::realDisk().tryLock(scratch.folder / "new", Files::Disk::Missing::refused), nullptr);
}

}  // namespace
