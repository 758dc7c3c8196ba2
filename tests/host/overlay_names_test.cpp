// The names of overlays: which ones are refused, and giving another one.
#include "formats/overlay_index.h"
#include "host/overlay_job.h"
#include "host/overlay_names.h"
#include "tests/files/forwarding_disk.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A disk that an index cannot be written on.
class FullDisk final : public ForwardingDisk {
 public:
  FullDisk() : ForwardingDisk(Files::realDisk()) {}
  bool isFull = false;

  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    if (isFull) throw Files::DiskError(target, "written", std::make_error_code(std::errc::no_space_on_device));
    return ForwardingDisk::create(temporary, target);
  }
};

class OverlayNames : public testing::Test {
 protected:
  OverlayNames() {
    for (const char16_t* name : {u"Letterhead", u"Terms"})
      Refhost::printIntoOverlay(world.preferences, world.face, {name == std::u16string(u"Terms") ? "terms" : "letter"},
                                name);
  }

  Refhost::Options options() {
    auto options = Testing::builtOptions();
    options.home = home.path;
    options.disk = &disk;
    return options;
  }

  static std::vector<std::string> listed(Testing::World& in) {
    std::vector<std::string> names;
    for (const auto& name : Refhost::overlayNames(*Refhost::overlayList(in.preferences)))
      names.push_back(Formats::toUtf8(name));
    return names;
  }
  std::vector<std::string> listed() { return listed(world); }

  std::string refusal(std::int32_t index, const std::u16string& name) {
    try {
      Refhost::renameOverlay(world.preferences, index, name);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return {};
  }

  std::string value(std::u16string_view property) { return Formats::toUtf8(world.value(property)); }

  std::filesystem::path index() const { return home.path / "profile" / "overlays" / "ovlNmFl.flo"; }
  std::vector<Formats::IndexEntry> entries() const { return Formats::readIndex(Testing::bytesOf(index())); }

  const Testing::TemporaryFolder home;
  FullDisk disk;
  Testing::World world{options()};
};

TEST_F(OverlayNames, ChangeInTheListAndInTheIndex) {
  const auto before = entries();
  Refhost::renameOverlay(world.preferences, 2, u"Stationery");
  EXPECT_THAT(listed(), ElementsAre("Stationery", "Terms"));
  EXPECT_EQ(entries().at(0), (Formats::IndexEntry{u"Stationery", before.at(0).fileName}));
  EXPECT_EQ(entries().at(1), before.at(1));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(OverlayNames, LeaveTheRenamedOverlaySelected) {
  auto& list = *Refhost::overlayList(world.preferences);
  list.choose(2);
  const std::string file = value(u"OverlaySourceFileName");
  Refhost::renameOverlay(world.preferences, 2, u"Zebra");
  EXPECT_EQ(list.selection(), 3);
  EXPECT_EQ(value(u"OverlaySourceFileName"), file);
  EXPECT_EQ(value(u"OverlayName"), "Zebra");
  EXPECT_EQ(value(u"OverlayImage"), "OverlayImage");
}

TEST_F(OverlayNames, LeaveOneOfSeveralOnItsPages) {
  const std::string file = Formats::toUtf8(entries().at(0).fileName);
  const std::string path = (index().parent_path() / file).string();
  world.preferences.set(u"OverlaySourceFileName", Formats::toUtf16(path + ";All$"));
  world.preferences.set(u"MultipleOverlayDetails", Formats::toUtf16(file + ";All$;$;$;$;$;$;$;$"));
  world.preferences.set(u"OverlayImage", u"MultipleOverlayImage");
  world.preferences.set(u"OverlaySel", u"Multiple");
  Refhost::renameOverlay(world.preferences, 2, u"Stationery");
  EXPECT_EQ(value(u"OverlaySel"), "Multiple");
  EXPECT_EQ(value(u"OverlaySourceFileName"), path + ";All$");
  EXPECT_EQ(value(u"MultipleOverlayDetails"), file + ";All$;$;$;$;$;$;$;$");
}

TEST_F(OverlayNames, LeaveAnOverlaySelectedThatIsSelectedByName) {
  world.preferences.set(u"OverlayImage", u"OverlayImage");
  world.preferences.set(u"OverlaySel", u"Letterhead");
  Refhost::renameOverlay(world.preferences, 2, u"Stationery");
  EXPECT_EQ(Refhost::overlayList(world.preferences)->selection(), 2);
  EXPECT_EQ(value(u"OverlaySel"), Formats::toUtf8(entries().at(0).fileName));
}

TEST_F(OverlayNames, AreWhatTheUserGaveInOtherPreferencesToo) {
  Refhost::renameOverlay(world.preferences, 2, u"Stationery");
  Testing::World other(options());
  EXPECT_THAT(listed(other), ElementsAre("Stationery", "Terms"));
}

TEST_F(OverlayNames, ComeBackByUndoAndRedo) {
  Refhost::Preferences& preferences = world.preferences;
  Refhost::overlayList(preferences)->choose(2);
  Refhost::renameOverlay(preferences, 2, u"Stationery");
  ASSERT_NE(preferences.nextToUndo(), nullptr);
  EXPECT_EQ(preferences.nextToUndo()->command, "rename-overlay");

  preferences.undo();
  EXPECT_THAT(listed(), ElementsAre("Letterhead", "Terms"));
  EXPECT_EQ(entries().at(0).name, u"Letterhead");
  EXPECT_EQ(value(u"OverlayName"), "Letterhead");
  EXPECT_EQ(Refhost::overlayList(preferences)->selection(), 2);

  preferences.redo();
  EXPECT_THAT(listed(), ElementsAre("Stationery", "Terms"));
  EXPECT_EQ(value(u"OverlayName"), "Stationery");
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(OverlayNames, LeaveWhatWasDoneBeforeToUndo) {
  Refhost::Preferences& preferences = world.preferences;
  Refhost::renameOverlay(preferences, 3, u"Conditions");
  preferences.undo();
  preferences.undo();
  EXPECT_THAT(listed(), ElementsAre("Letterhead"));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(OverlayNames, AreThoseOfAFileEachOnItsOwn) {
  auto both = entries();
  both.push_back({u"Alias", both.at(0).fileName});
  Testing::writeFile(index(), Formats::indexBytes(both));
  world.preferences.refreshStores();
  Refhost::renameOverlay(world.preferences, 2, u"Beta");
  EXPECT_THAT(listed(), ElementsAre("Beta", "Letterhead", "Terms"));
}

TEST_F(OverlayNames, CannotBeThoseOfTheEntriesForNoneAndForSeveral) {
  for (const char16_t* name : {u"None", u"none", u"MULTIPLE", u" None ", u"Ohne", u"mehrere", u"なし", u"Aucune"}) {
    EXPECT_THAT(refusal(2, name), HasSubstr("the list of overlays has an entry of that name")) << Formats::toUtf8(name);
    EXPECT_TRUE(Refhost::isReserved(name, Refhost::reservedOverlayNames(world.preferences.chrome())));
  }
  EXPECT_THAT(listed(), ElementsAre("Letterhead", "Terms"));
}

TEST_F(OverlayNames, CannotBeEmptyOrTaken) {
  EXPECT_EQ(refusal(2, u""), "An overlay needs a name.");
  EXPECT_EQ(refusal(2, u" \t"), "An overlay needs a name.");
  EXPECT_EQ(refusal(2, u"Terms"), "There is an overlay \"Terms\" already; choose another name.");
  EXPECT_EQ(refusal(2, u"Letterhead"), "");
  EXPECT_THAT(listed(), ElementsAre("Letterhead", "Terms"));
}

TEST_F(OverlayNames, CannotBeTakenByAnotherProgramMeanwhile) {
  Testing::World other(options());
  Refhost::renameOverlay(other.preferences, 3, u"Stationery");
  EXPECT_EQ(refusal(2, u"Stationery"), "There is an overlay \"Stationery\" already; choose another name.");
}

TEST_F(OverlayNames, AreNotThoseOfTheEntriesForNoneAndForSeveral) {
  for (const std::int32_t index : {-1, 0, 1, 4}) EXPECT_EQ(refusal(index, u"Other"), "There is no such overlay.");
}

TEST_F(OverlayNames, OfOtherUsersStay) {
  const auto folder = home.path / "localdata" / "theirs" / "overlays";
  std::filesystem::create_directories(folder);
  Testing::writeFile(folder / "00001.opa", "theirs");
  Testing::writeFile(folder / "ovlNmFl.flo", Formats::indexBytes({{u"Aaa", u"00001.opa"}}));
  world.preferences.refreshStores();
  ASSERT_THAT(listed(), ElementsAre("Aaa", "Letterhead", "Terms"));
  EXPECT_EQ(refusal(2, u"Mine"), "The overlay \"Aaa\" is not one of this user's own, and cannot be renamed.");
}

TEST_F(OverlayNames, StayWhenTheIndexCannotBeWritten) {
  const auto before = entries();
  disk.isFull = true;
  EXPECT_THAT(refusal(2, u"Stationery"), HasSubstr("ovlNmFl.flo"));
  EXPECT_EQ(entries(), before);
  EXPECT_THAT(listed(), ElementsAre("Letterhead", "Terms"));
}

TEST_F(OverlayNames, AreAsLongAsTheIndexHasRoom) {
  Refhost::renameOverlay(world.preferences, 2, std::u16string(70, u'x'));
  EXPECT_THAT(listed(), ElementsAre("Terms", std::string(64, 'x')));
  EXPECT_EQ(refusal(2, std::u16string(65, u'x')),
            "There is an overlay \"" + std::string(65, 'x') + "\" already; choose another name.");
}

}  // namespace
