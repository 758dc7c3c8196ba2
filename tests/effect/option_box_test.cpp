// The boxes that mirror one option of a property.
#include "plugin_object.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Testing::World;

struct OptionBox {
  const char* name;
  std::u16string property;
  std::u16string onValue;
  std::u16string offValue;
  std::u16string id;
};

class Option : public testing::TestWithParam<OptionBox> {};

TEST_P(Option, IsCheckedExactlyForTheOnValue) {
  const auto& [name, property, onValue, offValue, id] = GetParam();
  World world;
  world.preferences.set(property, onValue);
  EXPECT_TRUE(world.box(id).isChecked());
  auto lower = onValue;
  for (char16_t& unit : lower) unit = static_cast<char16_t>(unit | 0x20);
  for (const auto& value : {lower, onValue + u" ", std::u16string(), offValue}) {
    world.preferences.set(property, onValue);
    world.preferences.set(property, value);
    EXPECT_FALSE(world.box(id).isChecked());
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, Option,
    testing::Values(
        OptionBox{"FirstPageOnly", u"FirstPageOnly", u"True", u"False", u"ePTKWPageWatermark_PrintFirstPageOnly"},
        OptionBox{"WatermarkOccurance", u"WatermarkOccurance", u"PerPage", u"None", u"ePTKWPageWatermark_PrintPerPage"},
        OptionBox{"OverlayOccurance", u"OverlayOccurance", u"PerPage", u"None", u"ePTKWJobOverlayImage_PrintPerPage"},
        OptionBox{"OverlayLayering", u"OverlayLayering", u"Overlay", u"Underlay", u"ePTKWJobOverlayImage_Layering"}),
    [](const auto& instance) { return instance.param.name; });

class Availability : public testing::TestWithParam<OptionBox> {};

TEST_P(Availability, FollowsTheOnValueAlone) {
  const auto& [name, property, onValue, offValue, id] = GetParam();
  World world;
  world.take();
  world.preferences.setAvailable(property, onValue, false);
  const std::string box(id.begin(), id.end());
  EXPECT_EQ(Testing::widgetOperations(world.take()), std::vector<std::string>{box + " setEnabled false"});
  EXPECT_FALSE(world.box(id).WidgetNode::isEnabled());
  world.preferences.setAvailable(property, onValue, true);
  EXPECT_EQ(Testing::widgetOperations(world.take()), std::vector<std::string>{box + " setEnabled true"});
  world.preferences.setAvailable(property, offValue, false);
  EXPECT_TRUE(Testing::widgetOperations(world.take()).empty());
}

INSTANTIATE_TEST_SUITE_P(Connected, Availability,
                         testing::Values(OptionBox{"FirstPageOnly", u"FirstPageOnly", u"True", u"False",
                                                   u"ePTKWPageWatermark_PrintFirstPageOnly"},
                                         OptionBox{"WatermarkOccurance", u"WatermarkOccurance", u"PerPage", u"None",
                                                   u"ePTKWPageWatermark_PrintPerPage"},
                                         OptionBox{"OverlayOccurance", u"OverlayOccurance", u"PerPage", u"None",
                                                   u"ePTKWJobOverlayImage_PrintPerPage"}),
                         [](const auto& instance) { return instance.param.name; });

TEST(OverlayLayering, AvailabilityIsNotFollowed) {
  World world;
  world.take();
  world.preferences.setAvailable(u"OverlayLayering", u"Overlay", false);
  EXPECT_TRUE(Testing::widgetOperations(world.take()).empty());
}

TEST(OverlayLayering, BoxWouldFollowTheAvailabilityOfOver) {
  Testing::PluginObject object;
  auto& overlay = object.open(object.world.host).overlayTab();
  auto& box = dynamic_cast<Refhost::CheckBox&>(*object.gui->find(u"ePTKWJobOverlayImage_Layering"));
  const auto tell = [&](std::u16string_view option, bool isEnabled) {
    Kiln::ModelEnableChange change{Refhost::text(u"OverlayLayering"), Refhost::text(option), isEnabled};
    overlay.DisableOvlLayering(change);
    return box.WidgetNode::isEnabled();
  };
  EXPECT_TRUE(tell(u"Overlay", true));
  EXPECT_TRUE(tell(u"Underlay", false));
  EXPECT_FALSE(tell(u"Overlay", false));
  EXPECT_FALSE(tell(u"Underlay", true));
}

// A layout may show a box disabled until something is selected; these two are operable from the start.
TEST(WatermarkBoxes, ClickWritesTheProperty) {
  World world;
  world.take();
  world.box(u"ePTKWPageWatermark_PrintFirstPageOnly").click();
  world.box(u"ePTKWPageWatermark_PrintFirstPageOnly").click();
  EXPECT_EQ(Testing::transitions(world.take()),
            (std::vector<std::string>{"FirstPageOnly=True", "FirstPageOnly=False"}));
  world.preferences.set(u"WatermarkSel", u"2");
  world.take();
  world.box(u"ePTKWPageWatermark_PrintPerPage").click();
  world.box(u"ePTKWPageWatermark_PrintPerPage").click();
  EXPECT_EQ(Testing::transitions(world.take()),
            (std::vector<std::string>{"WatermarkOccurance=PerPage", "WatermarkOccurance=None"}));
}

TEST(OverlayBoxes, ClickWritesTheProperty) {
  World world;
  auto& layering = world.box(u"ePTKWJobOverlayImage_Layering");
  auto& perPage = world.box(u"ePTKWJobOverlayImage_PrintPerPage");
  layering.enable();
  perPage.enable();
  world.take();
  for (int i = 0; i < 2; ++i) {
    layering.click();
    perPage.click();
  }
  EXPECT_EQ(Testing::transitions(world.take()),
            (std::vector<std::string>{"OverlayLayering=Overlay", "OverlayOccurance=PerPage", "OverlayLayering=Underlay",
                                      "OverlayOccurance=None"}));
}

}  // namespace
