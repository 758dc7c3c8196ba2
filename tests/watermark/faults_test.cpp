// Lets every operation of the disk fail in turn, and looks at the home afterwards with a sound disk.
#include "store_changes.h"
#include "tests/files/every_fault.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::AnyOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// The names in the list of a store that is opened on a sound disk.
std::vector<std::string> namesAfter(const Home& home) {
  StoreWorld next(home.folder.path);
  std::vector<std::string> names = next.list(*next.open());
  for (std::string& line : names) line = line.substr(line.find('=') + 1);
  std::sort(names.begin(), names.end());
  EXPECT_THAT(next.face.failures, IsEmpty());
  return names;
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  return names;
}

void fill(const Home& home) {
  home.putUserFile(userFileBytes);
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
}

class EveryFault : public testing::TestWithParam<Change> {};

TEST_P(EveryFault, LeavesTheRecordsAsBeforeOrAsAfter) {
  const Home before;
  fill(before);
  const Home after;
  fill(after);
  StoreWorld sound(after.folder.path);
  GetParam().make(*sound.open());
  const auto either = AnyOf(namesAfter(before), namesAfter(after));

  const int faults = forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const Home home;
    fill(home);
    StoreWorld world(home.folder.path, disk);
    arm();
    const std::string failure = failureOf([&] { GetParam().make(*world.open()); });
    EXPECT_THAT(namesAfter(home), either) << fault << " " << failure;
    EXPECT_THAT(filesIn(home.folder.path / "user"), Not(Contains(HasSubstr("damaged")))) << fault;
  });
  EXPECT_GT(faults, 20);
}

INSTANTIATE_TEST_SUITE_P(While, EveryFault, testing::ValuesIn(changes),
                         [](const auto& each) { return each.param.name; });

// A change is never refused silently.
TEST(AFaultyDisk, LosesNoChangeThatWasReportedAsSaved) {
  forEveryFault([](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const Home home;
    fill(home);
    StoreWorld world(home.folder.path, disk);
    const auto store = world.open();
    arm();
    const std::string failure = failureOf([&] { world.add(*store, u"three"); });
    EXPECT_EQ(store->hasName(u"three"), failure.empty()) << fault;
    if (failure.empty()) {
      EXPECT_THAT(namesAfter(home), Contains("three")) << fault;
    }
  });
}

TEST(AFaultyDisk, TakesAFileThatCannotBeReadNeitherForAMissingNorForADamagedOne) {
  for (const std::errc reason : {std::errc::io_error, std::errc::permission_denied, std::errc::too_many_files_open})
    forEveryFault(
        [](FailingDisk& disk, const auto& arm, const Fault& fault) {
          const Home home;
          home.putUserFile(userFileBytes);
          StoreWorld world(home.folder.path, disk);
          arm();
          const auto store = world.open();
          if (!store->hasName(u"one")) {
            EXPECT_THAT(world.face.failures, SizeIs(1)) << fault;
            EXPECT_FALSE(store->isComplete()) << fault;
          }
          disk.failing = 0;
          EXPECT_THAT(filesIn(home.folder.path / "user"), testing::Each(Not(HasSubstr("damaged")))) << fault;
          EXPECT_THAT(world.namesIn(world.userFile()), SizeIs(testing::Ge(2U)));
        },
        reason);
}

TEST(AFaultyDisk, LetsNoExportWithoutEveryRecordSucceed) {
  int failures = 0;
  forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const Home home;
    fill(home);
    StoreWorld world(home.folder.path, disk);
    const auto to = home.folder.path / "export.xml";
    arm();
    const std::string failure = failureOf([&] { world.open(true)->exportMerged(world.host.path(to.u16string())); });
    disk.failing = 0;
    if (!failure.empty()) {
      ++failures;
      EXPECT_FALSE(std::filesystem::exists(to) && world.namesIn(to).size() < 4) << fault;
    } else {
      EXPECT_THAT(world.namesIn(to), SizeIs(4)) << fault;
    }
  });
  EXPECT_GT(failures, 10);
}

// A selection is not given up because of it, and a store that is opened later has all records again.
TEST(AFaultyDisk, WhoseFaultHasPassedGivesEverythingBack) {
  const Home home;
  fill(home);
  FailingDisk disk(Files::realDisk());
  StoreWorld world(home.folder.path, disk);
  disk.failing = 1;
  disk.reason = std::errc::io_error;
  const auto incomplete = world.open();
  EXPECT_FALSE(incomplete->hasName(u"one"));
  EXPECT_THROW(world.add(*incomplete, u"three"), Kiln::Exception);
  EXPECT_TRUE(world.open()->hasName(u"one"));
}

}  // namespace
