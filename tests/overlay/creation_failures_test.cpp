// Creating an overlay when files cannot be read or written.
#include "overlay_creation.h"
#include "tests/files/failing_disk.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

TEST_F(OverlayCreation, IntoAFolderThatCannotBeMadeIsToldAndLeavesNoDestination) {
  Testing::writeFile(home.folder.path / "profile" / "overlays", "a file in the way");
  Creation creation(home, u"Letterhead");
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(creation.world->face.failures, ElementsAre(HasSubstr("overlays")));
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
  EXPECT_EQ(creation.value(u"OverlayDestFileName"), "");
  PrintTime step(home, u"Letterhead", overlayJob(Refhost::Mode::prePrint));
  EXPECT_TRUE(step.isCancelled());
  EXPECT_THAT(step.face.failures, SizeIs(1));
}

TEST_F(OverlayCreation, ThatFailedIsTriedAgainByTheNextOk) {
  const auto inTheWay = home.folder.path / "profile" / "overlays";
  Testing::writeFile(inTheWay, "a file in the way");
  Creation creation(home, u"Letterhead");
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(creation.accept());
    EXPECT_EQ(creation.value(u"OverlayImageName"), "");
  }
  std::filesystem::remove(inTheWay);
  EXPECT_TRUE(creation.accept());
  EXPECT_EQ(creation.value(u"OverlayImageName"), "Letterhead");
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "True");
}

TEST_F(OverlayCreation, ThatFailedLeavesNothingOfItsNameInTheIndex) {
  const auto inTheWay = home.folder.path / "profile" / "overlays";
  Testing::writeFile(inTheWay, "a file in the way");
  Creation creation(home, u"first");
  EXPECT_FALSE(creation.accept());
  std::filesystem::remove(inTheWay);
  creation.world->face.jobStep = u"second";
  EXPECT_TRUE(creation.accept());
  const auto destination = std::filesystem::path(creation.value(u"OverlayDestFileName")).filename();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("second=" + destination.string()));
}

TEST_F(OverlayCreation, IsRefusedWhereTheQuestionCannotBeAsked) {
  const Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "kiln");
  std::filesystem::remove(resources.path / "kiln/base/content/dlg_overwrite.xul");
  home.putUser({{u"Letterhead", u"00001.opa"}});
  auto options = overlayJob();
  options.resources = resources.path / "kiln";
  Creation creation(home, u"Letterhead", options);
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(creation.accept());
    EXPECT_EQ(creation.value(u"OverlayImageName"), "");
  }
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "00001.opa");
}

TEST_F(OverlayCreation, ThatCannotReadTheIndexLeavesNoEarlierDestination) {
  Creation creation(home, u"Letterhead");
  creation.set(u"OvlDestCreated", u"True");
  std::filesystem::create_directories(OverlayHome::index(home.userFolder()));
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(creation.world->face.failures, SizeIs(1));
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
}

TEST_F(OverlayCreation, ThatFailsEndsThePropertyThatAskedForItAndThenForgetsTheName) {
  Testing::writeFile(home.folder.path / "profile" / "overlays", "a file in the way");
  Creation creation(home, u"Letterhead");
  creation.set(u"OverlayImageCreate", u"On");
  auto transitions = sent(creation.world->take());
  ASSERT_GT(transitions.size(), 3U);
  transitions.erase(transitions.begin(), transitions.end() - 3);
  EXPECT_THAT(transitions,
              ElementsAre("OvlDestCreated=False,OverlayDestFileName=", "OverlayImageCreate=Off", "OverlayImageName="));
  EXPECT_EQ(creation.value(u"OverlayImageCreate"), "Off");
  EXPECT_THAT(creation.world->face.failures, SizeIs(1));
}

TEST_F(OverlayCreation, LeavesTheOldOverlayWhicheverFileOperationFails) {
  int failures = 0;
  for (int failing = 1;; ++failing) {
    const OverlayHome each;
    each.putUser({{u"Letterhead", u"00001.opa"}, {u"stale", u"00002.opa"}});
    std::filesystem::remove(each.userFolder() / "00002.opa");
    FailingDisk disk(Files::realDisk());
    auto options = overlayJob();
    options.disk = &disk;
    Creation creation(each, u"Letterhead", options);
    creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
    disk.operations = 0;
    disk.failing = failing;
    const bool isAccepted = creation.accept();
    if (disk.operations < failing) break;
    if (isAccepted) continue;  // only an optional comparison failed
    ++failures;
    EXPECT_THAT(creation.world->face.failures, SizeIs(1)) << failing;
    EXPECT_EQ(creation.value(u"OverlayDestFileName"), "") << failing;
    EXPECT_EQ(bytesOf(each.userFolder() / "00001.opa"), "00001.opa") << failing;
    EXPECT_THAT(creation.items(), SizeIs(3)) << failing;
  }
  EXPECT_GT(failures, 5);
}

TEST_F(OverlayCreation, OnADiskThatFillsUpWhileTheDriverWritesLeavesTheOldOverlay) {
  for (int failing = 1;; ++failing) {
    const OverlayHome each;
    each.putUser({{u"Letterhead", u"00001.opa"}});
    FailingDisk disk(Files::realDisk());
    auto options = overlayJob();
    options.disk = &disk;
    Creation creation(each, u"Letterhead", options);
    creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
    ASSERT_TRUE(creation.accept());
    disk.operations = 0;
    disk.failing = failing;
    bool isWritten = true;
    try {
      creation.world->preferences.writeJob("new", "new picture");
    } catch (const std::runtime_error& problem) {
      isWritten = false;
      EXPECT_THAT(problem.what(), HasSubstr("cannot be"));
    }
    const bool isNew = bytesOf(each.userFolder() / "00001.opa") == "new";
    EXPECT_EQ(bytesOf(each.userFolder() / "00001.opa"), isNew ? "new" : "00001.opa") << failing;
    EXPECT_EQ(bytesOf(each.userFolder() / "00001.bmp"), isNew ? "new picture" : "thumbnail") << failing;
    EXPECT_TRUE(isNew || !isWritten) << failing;
    if (disk.operations < failing) break;
  }
}

TEST_F(OverlayCreation, ThatIsNotWrittenAfterAllPutsTheOldOverlayBack) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  const auto old = home.userFolder() / "00001.opa";
  const auto prepare = [](Creation& creation) {
    creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
    creation.set(u"OverlayImageCreate", u"On");
    EXPECT_EQ(creation.value(u"OvlDestCreated"), "True");
  };
  {
    Creation creation(home, u"Letterhead");
    prepare(creation);
    EXPECT_FALSE(std::filesystem::exists(old));
    creation.set(u"CancelJob", u"True");
    EXPECT_EQ(bytesOf(old), "00001.opa") << "the job is cancelled";
  }
  {
    Creation creation(home, u"Letterhead");
    prepare(creation);
    creation.set(u"OverlayDestFileName", u"");
    EXPECT_EQ(bytesOf(old), "00001.opa") << "the job goes elsewhere";
  }
  {
    Creation creation(home, u"Letterhead");
    prepare(creation);
  }
  EXPECT_FALSE(std::filesystem::exists(old));
  EXPECT_THAT(OverlayTab(home).items(), SizeIs(3)) << "opening puts back what was left aside";
  EXPECT_EQ(bytesOf(old), "00001.opa");
}

}  // namespace
