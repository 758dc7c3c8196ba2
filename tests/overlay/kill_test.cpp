// Kills the process at every step of creating and deleting overlays.
#include "overlay_tab.h"
#include "tests/files/cut_disk.h"

#include <set>

namespace {

constexpr const char* oldFile = "00001.opa";
constexpr const char* oldPicture = "thumbnail";

// The state of a home after reopening: each overlay's file and picture, by name.
std::map<std::string, std::pair<std::string, std::string>> overlaysOf(const OverlayHome& home) {
  OverlayTab tab(home);
  EXPECT_TRUE(tab.world->face.failures.empty());
  std::map<std::string, std::pair<std::string, std::string>> overlays;
  for (std::int32_t i = 2; i < tab.list().items().count(); ++i) {
    const auto item = tab.list().items().at(i);
    auto file = home.userFolder() / item->value().view();
    const std::string bytes = bytesOf(file);
    overlays[Formats::toUtf8(item->text().view())] = {bytes, bytesOf(file.replace_extension(".bmp"))};
  }
  return overlays;
}

// The files of the user's overlays, listed or not, and what belongs to them; without temporary files, whose process
// runs.
std::set<std::string> filesOf(const OverlayHome& home) {
  std::set<std::string> names;
  if (std::filesystem::exists(home.userFolder()))
    for (const auto& entry : std::filesystem::directory_iterator(home.userFolder()))
      if (entry.path().filename() != "ovlNmFl.flo" && entry.path().extension() != ".tmp")
        names.insert(entry.path().filename().string());
  return names;
}

// Prints a job into an overlay with that name, including the driver's part.
void create(const OverlayHome& home, Files::Disk& disk, const std::u16string& name) {
  auto options = Testing::builtOptions();
  options.properties = {{u"PrintJob", u"Overlay"}};
  options.disk = &disk;
  OverlayTab tab(home, options);
  tab.world->face.jobStep = name;
  tab.onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
  if (tab.world->preferences.accept()) tab.world->preferences.writeJob("new", "new picture");
}

// Deletes the overlay with that file.
void remove(const OverlayHome& home, Files::Disk& disk) {
  auto options = Testing::builtOptions();
  options.disk = &disk;
  OverlayTab tab(home, options);
  tab.choose(u"00001.opa");
  tab.remove();
}

// Runs the work with the process killed at each file operation in turn, and inspects the result each time.
template <class Work, class Look>
int killEverywhere(const OverlayHome::Names& overlays, const Work& work, const Look& look) {
  for (int killedAt = 1;; ++killedAt) {
    const OverlayHome home;
    if (!overlays.empty()) home.putUser(overlays);
    CutDisk disk;
    disk.killedAt = killedAt;
    try {
      work(home, disk);
    } catch (const Killed&) {
    } catch (const std::exception&) {
      // A dead process would not have done it.
    }
    look(home, killedAt);
    if (disk.operations < killedAt) return killedAt - 1;
  }
}

TEST(KilledWhileCreating, ANewOverlayIsThereWholeOrWasNeverThere) {
  const int points = killEverywhere(
      {}, [](const OverlayHome& home, Files::Disk& disk) { create(home, disk, u"new"); },
      [](const OverlayHome& home, int killedAt) {
        const auto left = overlaysOf(home);
        if (left.empty()) {
          EXPECT_TRUE(filesOf(home).empty()) << killedAt;
        } else {
          EXPECT_EQ(left.at("new"), std::make_pair(std::string("new"), std::string("new picture"))) << killedAt;
          EXPECT_EQ(filesOf(home).size(), 2U) << killedAt;
        }
      });
  EXPECT_GT(points, 15);
}

TEST(KilledWhileCreating, AReplacedOverlayIsTheOldOneOrTheNewOneWithItsPicture) {
  bool wasOld = false;
  bool wasNew = false;
  const int points = killEverywhere(
      {{u"form", u"00001.opa"}, {u"other", u"00002.opa"}},
      [](const OverlayHome& home, Files::Disk& disk) { create(home, disk, u"form"); },
      [&](const OverlayHome& home, int killedAt) {
        const auto left = overlaysOf(home);
        ASSERT_EQ(left.size(), 2U) << killedAt;
        const auto& form = left.at("form");
        const bool isOld = form == std::make_pair(std::string(oldFile), std::string(oldPicture));
        const bool isNew = form == std::make_pair(std::string("new"), std::string("new picture"));
        EXPECT_TRUE(isOld || isNew) << killedAt << ": " << form.first << ", " << form.second;
        EXPECT_EQ(left.at("other").second, oldPicture) << killedAt;
        wasOld |= isOld;
        wasNew |= isNew;
      });
  EXPECT_GT(points, 15);
  EXPECT_TRUE(wasOld && wasNew);
}

TEST(KilledWhileDeleting, AnOverlayIsThereWholeOrGoneWhole) {
  const int points = killEverywhere(
      {{u"form", u"00001.opa"}, {u"other", u"00002.opa"}}, remove, [](const OverlayHome& home, int killedAt) {
        const auto left = overlaysOf(home);
        EXPECT_EQ(left.count("other"), 1U) << killedAt;
        if (left.contains("form")) {
          EXPECT_EQ(left.at("form"), std::make_pair(std::string(oldFile), std::string(oldPicture))) << killedAt;
        } else {
          EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa")) << killedAt;
          EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.bmp")) << killedAt;
        }
      });
  EXPECT_GT(points, 6);
}

TEST(KilledAtAnyTime, LeavesNothingAsideThatOpeningDoesNotClear) {
  killEverywhere(
      {{u"form", u"00001.opa"}}, [](const OverlayHome& home, Files::Disk& disk) { create(home, disk, u"form"); },
      [](const OverlayHome& home, int killedAt) {
        overlaysOf(home);
        EXPECT_EQ(filesOf(home), (std::set<std::string>{"00001.bmp", "00001.opa"})) << killedAt;
      });
}

}  // namespace
