// Lets every operation of the disk fail in turn, and looks at the home afterwards with a sound disk.
#include "overlay_tab.h"
#include "tests/files/every_fault.h"

#include <set>

namespace {

using testing::AnyOf;
using testing::Contains;
using testing::IsEmpty;

// An overlay: its name, and the bytes of its file and its picture.
using Found = std::map<std::string, std::pair<std::string, std::string>>;

// The overlays after the next opening, on a sound disk.
Found overlaysAfter(const OverlayHome& home) {
  OverlayTab tab(home);
  EXPECT_THAT(tab.world->face.failures, IsEmpty());
  Found overlays;
  for (std::int32_t i = 2; i < tab.list().items().count(); ++i) {
    const auto item = tab.list().items().at(i);
    auto file = home.userFolder() / item->value().view();
    const std::string bytes = bytesOf(file);
    overlays[Formats::toUtf8(item->text().view())] = {bytes, bytesOf(file.replace_extension(".bmp"))};
  }
  return overlays;
}

Refhost::Options on(Files::Disk& disk, const OverlayHome& home) {
  auto options = Testing::builtOptions();
  options.home = home.folder.path;
  options.disk = &disk;
  return options;
}

// Opens the tab, and does nothing.
void look(const OverlayHome& home, Files::Disk& disk) { OverlayTab tab(home, on(disk, home)); }

void create(const OverlayHome& home, Files::Disk& disk, const std::u16string& name) {
  auto options = on(disk, home);
  options.properties = {{u"PrintJob", u"Overlay"}};
  OverlayTab tab(home, options);
  tab.world->face.jobStep = name;
  tab.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
  if (tab.world->preferences.accept()) tab.world->preferences.writeJob("new", "new picture");
}

void createNew(const OverlayHome& home, Files::Disk& disk) { create(home, disk, u"new"); }
void replace(const OverlayHome& home, Files::Disk& disk) { create(home, disk, u"Letterhead"); }

void remove(const OverlayHome& home, Files::Disk& disk) {
  OverlayTab tab(home, on(disk, home));
  for (std::int32_t i = 0; i < tab.list().items().count(); ++i)
    if (tab.list().items().at(i)->value().view() == u"00001.opa") {
      tab.list().choose(i);
      tab.remove();
      return;
    }
}

struct Action {
  const char* name;
  void (*run)(const OverlayHome& home, Files::Disk& disk);
};

class EveryFault : public testing::TestWithParam<Action> {};

TEST_P(EveryFault, LeavesTheOverlaysAsBeforeOrAsAfter) {
  const OverlayHome untouched;
  untouched.putUser(twoOverlays());
  const Found before = overlaysAfter(untouched);
  ASSERT_EQ(before.size(), 2U);
  GetParam().run(untouched, Files::realDisk());
  const Found after = overlaysAfter(untouched);

  const int faults = forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const OverlayHome home;
    home.putUser(twoOverlays());
    arm();
    const std::string failure = failureOf([&] { GetParam().run(home, disk); });
    EXPECT_THAT(overlaysAfter(home), AnyOf(before, after)) << fault << " " << failure;
  });
  EXPECT_GT(faults, 40);
}

INSTANTIATE_TEST_SUITE_P(While, EveryFault,
                         testing::Values(Action{"Opening", look}, Action{"Creating", createNew},
                                         Action{"Replacing", replace}, Action{"Deleting", remove}),
                         [](const auto& each) { return each.param.name; });

// What a killed process has set aside comes back in the end, whatever fails at the opening that should restore it.
TEST(AFaultyDisk, LosesNoOverlayThatWasSetAside) {
  forEveryFault([](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const OverlayHome home;
    home.putUser(twoOverlays());
    std::filesystem::rename(home.userFolder() / "00001.opa", home.userFolder() / ".kiln-aside-00001.opa");
    std::filesystem::rename(home.userFolder() / "00001.bmp", home.userFolder() / ".kiln-aside-00001.bmp");
    arm();
    const std::string failure = failureOf([&] { createNew(home, disk); });
    EXPECT_THAT(overlaysAfter(home), Contains(testing::Key("Letterhead"))) << fault << " " << failure;
  });
}

// The store alone: indexes and files that cannot be looked at.
TEST(AFaultyDisk, LetsNoExportWithoutEveryOverlaySucceed) {
  int failures = 0;
  forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const OverlayHome home;
    home.putUser(twoOverlays());
    home.putLocal("a", {{u"from a", u"00003.opa"}});
    OverlayStore world(home.folder.path, disk);
    const auto to = home.folder.path / "export";
    std::filesystem::create_directories(to);
    arm();
    const std::string failure = failureOf([&] { world.open(true)->exportTo(world.host.path(to.u16string())); });
    disk.failing = 0;
    if (!failure.empty()) {
      ++failures;
      return;
    }
    EXPECT_EQ(listed(bytesOf(OverlayHome::index(to))).size(), 3U) << fault;
    for (const char* name : {"00001", "00002", "00003"})
      for (const char* ending : {".opa", ".bmp"})
        EXPECT_TRUE(std::filesystem::exists(to / (std::string(name) + ending))) << fault << name << ending;
  });
  EXPECT_GT(failures, 20);
}

TEST(AFaultyDisk, TakesNoEntryOutOfAnIndexWhoseFileCannotBeLookedAt) {
  forEveryFault([](FailingDisk& disk, const auto& arm, const Fault& fault) {
    const OverlayHome home;
    home.putUser(twoOverlays());
    OverlayStore world(home.folder.path, disk);
    arm();
    const std::string failure = failureOf([&] {
      const auto store = world.open();
      store->addOverlay(u"new");
      store->save();
    });
    EXPECT_THAT(listed(home.userIndex()), Contains("terms=00002.opa")) << fault << failure;
    EXPECT_THAT(listed(home.userIndex()), Contains("Letterhead=00001.opa")) << fault << failure;
  });
}

// The selection of the overlays that a job prints on.
TEST(AFaultyDisk, ChangesNoSelectionOfOverlays) {
  const OverlayHome home;
  home.putUser(twoOverlays());
  const std::u16string file = (home.userFolder() / "00001.opa").u16string();
  for (const bool areSeveral : {false, true})
    forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
      auto options = on(disk, home);
      options.properties = {
          {u"OverlaySel", areSeveral ? u"Multiple" : u"00001.opa"},
          {u"OverlayImage", areSeveral ? u"MultipleOverlayImage" : u"OverlayImage"},
          {u"OverlaySourceFileName", areSeveral ? file + u";All$" : file},
          {u"MultipleOverlayDetails", areSeveral ? u"00001.opa;All$" : u""},
      };
      failureOf([&] {
        arm();
        OverlayTab tab(home, options);
        for (const auto& [name, value] : options.properties) EXPECT_EQ(tab.world->value(name), value) << fault;
      });
    });
}

}  // namespace
