// Built-in watermarks that were deleted, and come back.
#include "host/profiles/built_in_watermarks.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using Testing::bytesOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class BuiltInWatermarks : public testing::Test {
 protected:
  BuiltInWatermarks() {
    world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
  }

  Refhost::Options options() const {
    auto options = Testing::builtOptions();
    options.home = home.path;
    return options;
  }

  std::filesystem::path file() const { return home.path / "user" / "ZVeffect.xml"; }

  std::vector<std::string> listed() {
    auto& list = world.widget<Refhost::ListBox>(u"lst_selectedWatermark");
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < list.items().count(); ++i)
      names.push_back(Formats::toUtf8(list.items().at(i)->displayedText().view()));
    return names;
  }

  void remove(const std::string& name) {
    const auto names = listed();
    world.widget<Refhost::ListBox>(u"lst_selectedWatermark")
        .choose(static_cast<std::int32_t>(std::ranges::find(names, name) - names.begin()));
    world.widget<Refhost::Button>(u"btn_WMDel").click();
  }

  std::vector<std::string> missing() {
    std::vector<std::string> names;
    for (const auto& each : Refhost::missingBuiltIns(world.preferences))
      names.push_back(Formats::toUtf8(each.id) + "=" + Formats::toUtf8(each.name));
    return names;
  }

  const Testing::TemporaryFolder home;
  Testing::World world{options()};
};

TEST_F(BuiltInWatermarks, AreMissingOnceTheyAreDeleted) {
  EXPECT_THAT(missing(), IsEmpty());
  remove("Draft");
  remove("Copy");
  EXPECT_THAT(missing(), ElementsAre("2=Draft", "3=Copy"));
}

TEST_F(BuiltInWatermarks, ComeBackAsTheyCame) {
  const auto before = listed();
  remove("Draft");
  const std::string others = bytesOf(file());
  Refhost::restoreBuiltIns(world.preferences, {u"2"});
  EXPECT_EQ(listed(), before);
  EXPECT_THAT(missing(), IsEmpty());
  EXPECT_THAT(bytesOf(file()), HasSubstr("$IDS_WM_DRAFT;"));
  world.preferences.undo();
  EXPECT_EQ(bytesOf(file()), others);
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(BuiltInWatermarks, AreNotThereTwice) {
  const std::string before = bytesOf(file());
  Refhost::restoreBuiltIns(world.preferences, {u"2", u"9"});
  EXPECT_EQ(bytesOf(file()), before);
}

TEST_F(BuiltInWatermarks, GetANumberWhereTheirNameIsTaken) {
  remove("Draft");
  world.face.onModal = [](Refhost::Dialog& dialog) {
    dynamic_cast<Refhost::TextBox&>(*dialog.layout().find(u"txt_EffWMTxtBox")).edit(u"Draft", Refhost::Edit::typed);
    dialog.accept();
  };
  world.widget<Refhost::Button>(u"btn_WMAdd").click();
  Refhost::restoreBuiltIns(world.preferences, {u"2"});
  EXPECT_THAT(listed(), Contains("Draft"));
  EXPECT_THAT(listed(), Contains("Draft (2)"));
}

TEST_F(BuiltInWatermarks, DoNotComeBackIntoADamagedFile) {
  remove("Draft");
  Testing::writeFile(file(), "<Watermarks>");
  Refhost::restoreBuiltIns(world.preferences, {u"2"});
  EXPECT_EQ(bytesOf(file()), "<Watermarks>");
  EXPECT_THAT(world.face.failures, Not(IsEmpty()));
}

TEST_F(BuiltInWatermarks, AreNotMissingWhereTheHostHidesThem) {
  remove("Draft");
  auto hiding = options();
  hiding.settings = {{u"kilnworks.defaultuserdata.hide", u"2"}};
  Testing::World other(hiding);
  EXPECT_THAT(Refhost::missingBuiltIns(other.preferences), IsEmpty());
}

}  // namespace
