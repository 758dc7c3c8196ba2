// Creating an overlay from a job: the flow, its three triggers, and the driver's file.
#include "overlay_creation.h"
#include "tests/files/failing_disk.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(OverlayCreation, PreparesADestinationInAFolderThatItMakes) {
  Creation creation(home, u"Letterhead");
  EXPECT_TRUE(creation.accept());
  const auto events = creation.world->take();
  const std::string destination = creation.value(u"OverlayDestFileName");
  EXPECT_EQ(std::filesystem::path(destination).parent_path(), home.userFolder());
  EXPECT_PRED1(isDrawnName, std::filesystem::path(destination).filename().string());
  EXPECT_THAT(sent(events),
              ElementsAre("OvlDestCreated=False", "OvlDestCreated=True,OverlayDestFileName=" + destination));
  const auto fileName = std::filesystem::path(destination).filename().u16string();
  EXPECT_EQ(home.userIndex(), recordBytes(u"Letterhead", fileName));
  EXPECT_FALSE(std::filesystem::exists(destination));
  EXPECT_THAT(creation.dialogs, IsEmpty());
}

TEST_F(OverlayCreation, IsListedAndPrintableOnceTheDriverHasWrittenIt) {
  std::string file;
  {
    Creation creation(home, u"Letterhead");
    creation.accept();
    EXPECT_THAT(OverlayTab(home).items(), SizeIs(2)) << "there is no file yet";
    creation.world->preferences.writeJob("captured", bitmap(2, 3));
    file = creation.value(u"OverlayDestFileName");
  }
  EXPECT_EQ(bytesOf(file), "captured");
  OverlayTab tab(home);
  EXPECT_EQ(tab.items().back(), std::filesystem::path(file).filename().string() + "=Letterhead");
  tab.list().choose(2);
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), file);
  EXPECT_EQ(tab.picture(), file.substr(0, file.size() - 4) + ".bmp");
}

TEST_F(OverlayCreation, IsRefusedWithoutAName) {
  for (const auto& name : {std::optional<std::u16string>(), std::optional<std::u16string>(u"")}) {
    Creation creation(home, name);
    EXPECT_FALSE(creation.accept());
    EXPECT_NE(creation.world->preferences.gui(), nullptr);
    EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
    EXPECT_FALSE(std::filesystem::exists(home.userFolder()));
  }
}

TEST_F(OverlayCreation, AsksBeforeItReplacesAndWritesToTheOldFile) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  Creation creation(home, u"Letterhead");
  creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
  EXPECT_TRUE(creation.accept());
  EXPECT_THAT(creation.dialogs, ElementsAre(overwrite));
  EXPECT_EQ(creation.value(u"OverlayDestFileName"), creation.userFile("00001.opa"));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  creation.world->preferences.writeJob("new");
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "new");
  EXPECT_EQ(home.userIndex(), recordBytes(u"Letterhead", u"00001.opa"));
}

TEST_F(OverlayCreation, RemovesTheOldFileBeforeItWritesTheIndex) {
  home.putUser({{u"Letterhead", u"00001.opa"}, {u"stale", u"00002.opa"}});
  std::filesystem::remove(home.userFolder() / "00002.opa");
  Creation creation(home, u"Letterhead");
  creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
  creation.world->take();
  EXPECT_TRUE(creation.accept());
  std::vector<std::string> steps;
  for (const auto& event : creation.world->take())
    if (event.op == "write" || event.op == "delete") steps.push_back(event.op + " " + Testing::member(event, "path"));
  EXPECT_THAT(steps, ElementsAre("delete profile/overlays/00001.opa", "write profile/overlays/ovlNmFl.flo"));
}

TEST_F(OverlayCreation, IsOffWhenTheUserKeepsTheOldOne) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  Creation creation(home, u"Letterhead");
  creation.onDialog = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(sent(creation.world->take()),
              ElementsAre("OvlDestCreated=False", "OvlDestCreated=False,OverlayImageName="));
  EXPECT_EQ(creation.value(u"OverlayImageName"), "");
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "00001.opa");
}

TEST_F(OverlayCreation, ForgetsAnEarlierYes) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  Creation creation(home, u"Letterhead");
  creation.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
  creation.set(u"OverlayImageCreate", u"On");
  creation.world->preferences.writeJob("new");
  creation.set(u"OverlayImageName", u"");
  creation.onDialog = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(creation.dialogs, ElementsAre(overwrite, overwrite));
  EXPECT_EQ(bytesOf(home.userFolder() / "00001.opa"), "new");
}

TEST_F(OverlayCreation, DoesNotTakeTheYesOfACreationThatRunsInsideItsQuestion) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  Creation creation(home, u"Letterhead");
  creation.onDialog = [&creation](Refhost::Dialog& dialog) {
    if (creation.dialogs.size() > 1) {
      dialog.accept();
      return;
    }
    creation.set(u"OverlayImageCreate", u"On");
    dialog.cancel();
  };
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(creation.dialogs, ElementsAre(overwrite, overwrite));
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
}

TEST_F(OverlayCreation, TellsOfAnUnreadableIndexBeforeItAsksForAName) {
  std::filesystem::create_directories(OverlayHome::index(home.userFolder()));  // a folder where a file should be
  Creation creation(home, u"Letterhead");
  creation.world->face.failures.clear();
  creation.accept();
  EXPECT_THAT(creation.world->face.failures, ElementsAre(HasSubstr("ovlNmFl.flo")));
  EXPECT_EQ(creation.world->face.jobSteps, 0);
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
}

TEST_F(OverlayCreation, DoesNotAskForALabelWhoseFileIsGone) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  Creation creation(home, u"Letterhead");
  std::filesystem::remove(home.userFolder() / "00001.opa");
  EXPECT_TRUE(creation.accept());
  EXPECT_THAT(creation.dialogs, IsEmpty());
  EXPECT_EQ(creation.value(u"OverlayDestFileName"), creation.userFile("00001.opa"));
}

TEST_F(OverlayCreation, DoesNotAskForADownloadedOverlaysName) {
  home.putLocal("a", {{u"Letterhead", u"00001.opa"}});
  auto options = overlayJob();
  options.settings = {{u"kilnworks.tips.userdata.support", u"True"}};
  Creation creation(home, u"Letterhead", options);
  EXPECT_TRUE(creation.accept());
  EXPECT_THAT(creation.dialogs, IsEmpty());
  EXPECT_EQ(std::filesystem::path(creation.value(u"OverlayDestFileName")).parent_path(), home.userFolder());
}

TEST_F(OverlayCreation, SucceedsWithNineteenAndShowsTheFullDialogWithTwentyAndMore) {
  for (const int number : {19, 20, 21}) {
    home.putUser(OverlayHome::forms(number));
    Creation creation(home, u"one more");
    EXPECT_EQ(creation.accept(), number == 19) << number;
    EXPECT_EQ(creation.dialogs, number == 19 ? std::vector<std::string>() : std::vector<std::string>{full}) << number;
    EXPECT_EQ(creation.value(u"OvlDestCreated"), number == 19 ? "True" : "False") << number;
    EXPECT_EQ(creation.value(u"OverlayImageName"), number == 19 ? "one more" : "")
        << number << ": no name is asked for where there is no room";
  }
}

TEST_F(OverlayCreation, CountsWhatAnotherProcessHasAddedSinceTheTabOpened) {
  Creation creation(home, u"one more");
  home.putUser(OverlayHome::forms(20));
  EXPECT_FALSE(creation.accept());
  EXPECT_THAT(creation.dialogs, ElementsAre(full));
}

TEST_F(OverlayCreation, CutsNamesAsTheIndexDoesAndKnowsThemAgain) {
  const std::u16string smiley = u"\U0001F600";
  const std::pair<std::u16string, std::u16string> names[] = {
      {std::u16string(63, u'a'), std::u16string(63, u'a')},
      {std::u16string(64, u'b'), std::u16string(64, u'b')},
      {std::u16string(65, u'c'), std::u16string(64, u'c')},
      {std::u16string(70, u'd'), std::u16string(64, u'd')},
      {std::u16string(63, u'e') + smiley, std::u16string(63, u'e') + smiley.substr(0, 1)},
      {std::u16string(62, u'f') + smiley, std::u16string(62, u'f') + smiley},
  };
  for (const auto& [given, stored] : names) {
    {
      Creation creation(home, given);
      ASSERT_TRUE(creation.accept());
      creation.world->preferences.writeJob("first");
    }
    EXPECT_EQ(Effect::readIndex(home.userIndex()).back().name, stored);
    Creation again(home, given);
    EXPECT_FALSE(again.accept());
    EXPECT_THAT(again.dialogs, ElementsAre(overwrite));
  }
}

TEST_F(OverlayCreation, BeginsAndEndsWithThePropertyThatAsksForIt) {
  Creation creation(home, u"Letterhead");
  creation.set(u"OverlayImageCreate", u"On");
  const std::string destination = creation.value(u"OverlayDestFileName");
  EXPECT_THAT(sent(creation.world->take()),
              ElementsAre("OvlDestCreated=False", "OvlDestCreated=True,OverlayDestFileName=" + destination,
                          "OverlayImageCreate=Off"));
  EXPECT_EQ(creation.value(u"OverlayImageCreate"), "Off");
}

TEST_F(OverlayCreation, EndsThePropertyThatAsksForItAlsoWithoutAnOverlay) {
  Creation creation(home, std::nullopt);
  creation.set(u"OverlayImageCreate", u"On");
  EXPECT_EQ(creation.value(u"OverlayImageCreate"), "Off");
  EXPECT_EQ(creation.value(u"OvlDestCreated"), "False");
}

TEST_F(OverlayCreation, IsNotForOrdinaryJobs) {
  OverlayTab tab(home);
  tab.world->face.jobStep = u"Letterhead";
  tab.set(u"OverlayImageCreate", u"On");
  EXPECT_THAT(sent(tab.world->take()), IsEmpty());
  EXPECT_EQ(tab.value(u"OverlayImageCreate"), "On");
}

TEST_F(OverlayCreation, LeavesAnOrdinaryJobNoDestination) {
  OverlayTab tab(home);
  tab.set(u"OverlayDestFileName", u"/earlier.opa");
  tab.world->take();
  EXPECT_TRUE(tab.world->preferences.accept());
  EXPECT_THAT(sent(tab.world->take()), ElementsAre("OverlayDestFileName="));
}

TEST_F(OverlayCreation, IsDoneAlreadyWhereTheJobHasAName) {
  auto options = overlayJob();
  options.properties.emplace_back(u"OverlayImageName", u"Letterhead");
  options.properties.emplace_back(u"OverlayDestFileName", u"/earlier.opa");
  Creation creation(home, u"other", options);
  EXPECT_TRUE(creation.accept());
  EXPECT_THAT(sent(creation.world->take()), IsEmpty());
  EXPECT_EQ(creation.value(u"OverlayDestFileName"), "/earlier.opa");
}

TEST_F(OverlayCreation, AtPrintTimePreparesTheDestination) {
  PrintTime step(home, u"Letterhead", overlayJob(Refhost::Mode::prePrint));
  EXPECT_FALSE(step.isCancelled());
  EXPECT_EQ(step.preferences->model().value(u"OvlDestCreated"), u"True");
  step.preferences->writeJob("captured");
  EXPECT_EQ(OverlayTab(home).items().size(), 3U);
}

TEST_F(OverlayCreation, AtPrintTimeCancelsAJobWithoutANameOrWithoutRoom) {
  EXPECT_TRUE(PrintTime(home, std::nullopt, overlayJob(Refhost::Mode::prePrint)).isCancelled());
  home.putUser(OverlayHome::forms(20));
  PrintTime step(home, u"one more", overlayJob(Refhost::Mode::prePrint));
  EXPECT_TRUE(step.isCancelled());
  EXPECT_THAT(step.dialogs, ElementsAre(full));
}

TEST_F(OverlayCreation, AtPrintTimeCancelsAJobWhoseOldOverlayIsKept) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  PrintTime step(home, u"Letterhead", overlayJob(Refhost::Mode::prePrint));
  EXPECT_TRUE(step.isCancelled());
  EXPECT_THAT(step.dialogs, ElementsAre(overwrite));
}

TEST_F(OverlayCreation, AtPrintTimeLeavesOtherJobsAlone) {
  auto ordinary = overlayJob(Refhost::Mode::prePrint);
  ordinary.properties.clear();
  auto named = overlayJob(Refhost::Mode::prePrint);
  named.properties.emplace_back(u"OverlayImageName", u"Letterhead");
  for (const auto& options : {ordinary, named}) {
    PrintTime step(home, u"other", options);
    EXPECT_FALSE(step.isCancelled());
    EXPECT_THAT(sent(step.events), IsEmpty());
  }
}

TEST(WriteJob, IsRefusedWithoutADestination) {
  const OverlayHome home;
  OverlayTab tab(home);
  try {
    tab.world->preferences.writeJob("bytes");
    FAIL();
  } catch (const std::runtime_error& problem) {
    EXPECT_STREQ(problem.what(), "The job has no destination: the property OverlayDestFileName is empty.");
  }
}

TEST(WriteJob, WorksAfterThePreferencesWereAccepted) {
  const OverlayHome home;
  OverlayTab tab(home);
  tab.world->preferences.accept();
  tab.set(u"OverlayDestFileName", (home.folder.path / "x.opa").u16string());
  tab.world->preferences.writeJob("bytes");
  EXPECT_EQ(bytesOf(home.folder.path / "x.opa"), "bytes");
  EXPECT_FALSE(std::filesystem::exists(home.folder.path / "x.bmp"));
}

}  // namespace
