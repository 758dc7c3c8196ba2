// Jobs that become overlays: what is written, and what is restored when that fails.
#include "formats/overlay_index.h"
#include "host/overlay_job.h"
#include "host/widgets/list.h"
#include "tests/files/forwarding_disk.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <utility>

namespace {

using Testing::bytesOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A disk that calls a function before it creates an overlay file.
class OverlayDisk final : public ForwardingDisk {
 public:
  OverlayDisk() : ForwardingDisk(Files::realDisk()) {}
  std::function<void(const Path&)> beforeOverlay;
  bool isFlushFailing = false;  // of the next folder

  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    if (beforeOverlay && target.extension() == ".opa") beforeOverlay(target);
    return ForwardingDisk::create(temporary, target);
  }
  void syncFolder(const Path& folder) override {
    if (std::exchange(isFlushFailing, false))
      throw Files::DiskError(folder, "flushed to the disk", std::make_error_code(std::errc::io_error));
    ForwardingDisk::syncFolder(folder);
  }
};

void fillUp(const std::filesystem::path& file) {
  throw Files::DiskError(file, "written", std::make_error_code(std::errc::no_space_on_device));
}

void runOutOfMemory(const std::filesystem::path&) { throw std::bad_alloc(); }

class OverlayJob : public testing::Test {
 protected:
  OverlayJob() {
    world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
    world.face.jobStep = u"Letterhead";
  }

  Refhost::Options options() {
    auto options = Testing::builtOptions();
    options.home = home.path;
    options.disk = &disk;
    return options;
  }

  std::optional<std::u16string> print(const Refhost::CapturedJob& captured = {"captured", "picture"}) {
    return Refhost::printIntoOverlay(world.preferences, world.face, captured);
  }

  // The contents of the user's overlays and pictures.
  std::vector<std::string> overlays() const {
    std::vector<std::string> contents;
    const auto folder = home.path / "profile" / "overlays";
    if (!std::filesystem::exists(folder)) return {};
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      if (entry.path().extension() != ".flo") contents.push_back(bytesOf(entry.path()));
    std::sort(contents.begin(), contents.end());
    return contents;
  }

  // The number of overlays that the tab lists.
  int listed() { return world.widget<Refhost::ComboBox>(u"cmb_EffOverlay").items().count() - 2; }

  const Testing::TemporaryFolder home;
  OverlayDisk disk;
  Testing::World world{options()};
};

TEST_F(OverlayJob, WritesTheCapturedJobAndItsPicture) {
  EXPECT_EQ(print(), u"Letterhead");
  EXPECT_THAT(overlays(), ElementsAre("captured", "picture"));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(OverlayJob, WritesACapturedJobWithoutAPicture) {
  print({"captured"});
  EXPECT_THAT(overlays(), ElementsAre("captured"));
}

TEST_F(OverlayJob, IsListedInThePreferencesAtOnce) {
  print();
  EXPECT_EQ(listed(), 1);
}

TEST_F(OverlayJob, IsListedInOtherPreferencesOnceTheirStoresAreRefreshed) {
  Testing::World other(options());
  auto& list = other.widget<Refhost::ComboBox>(u"cmb_EffOverlay");
  const int before = list.items().count();
  print();
  EXPECT_EQ(list.items().count(), before);
  other.preferences.refreshStores();
  EXPECT_EQ(list.items().count(), before + 1);
  EXPECT_FALSE(other.preferences.canUndo());
}

TEST_F(OverlayJob, LeavesThePreferencesAsTheyWere) {
  world.preferences.set(u"MirrorImage", u"MirrorImage");
  const auto before = world.preferences.model().values();
  print();
  EXPECT_EQ(world.preferences.model().values(), before);
  EXPECT_TRUE(world.preferences.canUndo());
}

TEST_F(OverlayJob, IsTracedInThePreferences) {
  print();
  EXPECT_THAT(Testing::transitions(world.events), Contains(HasSubstr("OvlDestCreated=True")));
}

TEST_F(OverlayJob, WithoutANameWritesNothing) {
  world.face.jobStep = {};
  EXPECT_EQ(print(), std::nullopt);
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(OverlayJob, IgnoresTheDestinationOfAnEarlierOne) {
  world.preferences.set(u"OverlayDestFileName", (home.path / "earlier.opa").u16string());
  print();
  EXPECT_THAT(overlays(), ElementsAre("captured", "picture"));
  EXPECT_FALSE(std::filesystem::exists(home.path / "earlier.opa"));
}

TEST_F(OverlayJob, OnAFullDiskRestoresTheOverlayToReplace) {
  print({"old", "old picture"});
  disk.beforeOverlay = fillUp;
  EXPECT_THROW(print(), std::runtime_error);
  EXPECT_THAT(overlays(), ElementsAre("old", "old picture"));
  EXPECT_EQ(listed(), 1);
}

TEST_F(OverlayJob, OutOfMemoryRestoresTheOverlayToReplace) {
  print({"old", "old picture"});
  disk.beforeOverlay = runOutOfMemory;
  EXPECT_THROW(print(), std::bad_alloc);
  EXPECT_THAT(overlays(), ElementsAre("old", "old picture"));
  EXPECT_EQ(listed(), 1);
}

// The last step: the file is in place, but nobody knows whether it stays there.
TEST_F(OverlayJob, WhoseLastFlushFailsIsReportedAndKept) {
  print({"old", "old picture"});
  disk.beforeOverlay = [this](const std::filesystem::path&) { disk.isFlushFailing = true; };
  EXPECT_THROW(print(), Files::DiskError);
  EXPECT_THAT(overlays(), ElementsAre("captured", "picture"));
  EXPECT_EQ(listed(), 1);
  Testing::World next(options());
  EXPECT_EQ(next.widget<Refhost::ComboBox>(u"cmb_EffOverlay").items().count(), 3);
}

// To a program that reads the index meanwhile, the record is one without a file, which the next change drops.
TEST_F(OverlayJob, IsListedThoughAnotherProgramHasDroppedItsRecordMeanwhile) {
  auto given = options();
  given.properties = {{u"PrintJob", u"Overlay"}};
  Refhost::Preferences job(given, world.face);
  job.open();
  ASSERT_TRUE(job.accept());
  const auto index = home.path / "profile" / "overlays" / "ovlNmFl.flo";
  const std::string written = Testing::bytesOf(index);
  Testing::writeFile(index, "");
  Refhost::writeOverlay(job, {"captured", "picture"});
  EXPECT_EQ(Testing::bytesOf(index), written);
}

TEST_F(OverlayJob, DoesNotWriteTheFileOfAnotherOverlay) {
  auto given = options();
  given.properties = {{u"PrintJob", u"Overlay"}};
  Refhost::Preferences job(given, world.face);
  job.open();
  ASSERT_TRUE(job.accept());
  const std::filesystem::path file = *job.model().value(u"OverlayDestFileName");
  const std::string theirs = Formats::indexBytes({{u"theirs", file.filename().u16string()}});
  Testing::writeFile(file.parent_path() / "ovlNmFl.flo", theirs);
  EXPECT_THROW(Refhost::writeOverlay(job, {"captured", "picture"}), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(Testing::bytesOf(file.parent_path() / "ovlNmFl.flo"), theirs);
}

TEST_F(OverlayJob, ThatCannotBeWrittenIsCancelled) {
  auto given = options();
  given.properties = {{u"PrintJob", u"Overlay"}};
  Refhost::Preferences job(given, world.face);
  job.open();
  ASSERT_TRUE(job.accept());
  EXPECT_EQ(job.model().value(u"CancelJob"), u"False");
  disk.beforeOverlay = fillUp;
  EXPECT_THROW(Refhost::writeOverlay(job, {"captured", "picture"}), std::runtime_error);
  EXPECT_EQ(job.model().value(u"CancelJob"), u"True");
  EXPECT_THAT(overlays(), IsEmpty());
}

// A job that takes the place of an overlay, in a home whose lock another program keeps longer than anybody waits.
class OverlayJobInABusyHome : public OverlayJob {
 protected:
  OverlayJobInABusyHome() {
    print({"old", "old picture"});
    auto given = options();
    given.properties = {{u"PrintJob", u"Overlay"}};
    given.longestWait = {};
    job = std::make_unique<Refhost::Preferences>(given, world.face);
    job->open();
    EXPECT_TRUE(job->accept());
    file = *job->model().value(u"OverlayDestFileName");
    lock = std::make_unique<Files::HomeLock>(Files::realDisk(), home.path);
  }

  std::unique_ptr<Refhost::Preferences> job;
  std::filesystem::path file;
  std::unique_ptr<Files::HomeLock> lock;
};

TEST_F(OverlayJobInABusyHome, RestoresTheOverlayAtTheNextChangeAfterItWasCancelled) {
  job->set(u"CancelJob", u"True");
  EXPECT_FALSE(std::filesystem::exists(file));
  lock.reset();
  job->set(u"MirrorImage", u"MirrorImage");
  EXPECT_EQ(bytesOf(file), "old");
  EXPECT_THAT(overlays(), ElementsAre("old", "old picture"));
}

TEST_F(OverlayJobInABusyHome, RestoresTheOverlayAtTheEndAfterItWasCancelled) {
  job->set(u"CancelJob", u"True");
  lock.reset();
  job.reset();
  EXPECT_EQ(bytesOf(file), "old");
}

TEST_F(OverlayJobInABusyHome, ThatCannotBeWrittenRestoresTheOverlayAtTheEnd) {
  EXPECT_THROW(Refhost::writeOverlay(*job, {"captured", "picture"}), Files::DiskError);
  EXPECT_FALSE(std::filesystem::exists(file)) << "moved without the lock";
  lock.reset();
  job.reset();
  EXPECT_EQ(bytesOf(file), "old");
  EXPECT_THAT(overlays(), ElementsAre("old", "old picture"));
}

TEST_F(OverlayJob, WithoutADestinationIsCancelled) {
  EXPECT_THROW(Refhost::writeOverlay(world.preferences, {"captured"}), std::runtime_error);
  EXPECT_EQ(world.value(u"CancelJob"), u"True");
}

}  // namespace
