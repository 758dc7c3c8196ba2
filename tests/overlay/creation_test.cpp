// Creating an overlay from a job: the flow, its three triggers, and the driver's file.
#include "overlay_tab.h"
#include "tests/files/failing_disk.h"

namespace {

using Formats::toUtf8;
using Testing::builtOptions;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string full = "chrome://effect/content/dlg_overlayfull.xul";
const std::string overwrite = "chrome://base/content/dlg_overwrite.xul";

// The preferences of a job to be captured as an overlay.
Refhost::Options overlayJob(Refhost::Mode mode = Refhost::Mode::docProp) {
  auto options = builtOptions();
  options.mode = mode;
  options.properties = {{u"PrintJob", u"Overlay"}};
  return options;
}

struct Creation : OverlayTab {
  explicit Creation(const OverlayHome& openedHome, std::optional<std::u16string> name,
                    Refhost::Options options = overlayJob())
      : OverlayTab(openedHome, std::move(options)) {
    world->face.jobStep = std::move(name);
  }

  // Presses OK of the preferences.
  bool accept() { return world->preferences.accept(); }
};

class OverlayCreation : public testing::Test {
 protected:
  OverlayHome home;
};

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

// The face answers the job step while the print-time step runs.
struct PrintTime {
  PrintTime(const OverlayHome& home, std::optional<std::u16string> name, Refhost::Options options) {
    face.jobStep = std::move(name);
    face.onModal = [this](Refhost::Dialog& dialog) { dialogs.push_back(toUtf8(dialog.url())); };
    options.home = home.folder.path;
    preferences.emplace(std::move(options), face);
    preferences->trace().listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
    preferences->open();
  }
  bool isCancelled() {
    const bool isTold =
        std::any_of(events.begin(), events.end(), [](const auto& event) { return event.op == "cancel-job"; });
    EXPECT_EQ(isTold, preferences->model().value(u"CancelJob") == u"True");
    return isTold;
  }

  Testing::RecordingFace face;
  std::vector<std::string> dialogs;
  std::vector<Refhost::TraceEvent> events;
  std::optional<Refhost::Preferences> preferences;
};

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
