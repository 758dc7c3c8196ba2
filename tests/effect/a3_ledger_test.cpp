// What decides whether the rotation of A3 and Ledger pages is offered, and what its box says.
#include "plugin_object.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Testing::builtOptions;
using Testing::widgetOperations;
using Testing::World;

constexpr auto rotateA3LDBox = u"chk_EffRot180DegForA3LD";

using Lines = std::vector<std::string>;

Refhost::Options customised(std::u16string flag, std::u16string degree) {
  auto options = builtOptions();
  options.customisation = {{u"XMLCustomisation", std::move(flag)}, {u"A3LD180Degree", std::move(degree)}};
  return options;
}

TEST(A3LedgerCustomisation, TakesTheBoxAwayWhenItSaysTrueAndFalse) {
  World world(customised(u"true", u"false"));
  EXPECT_FALSE(world.box(rotateA3LDBox).isVisible());
  EXPECT_FALSE(world.box(rotateA3LDBox).WidgetNode::isEnabled());
  auto operations = widgetOperations(world.take());
  operations.resize(2);
  EXPECT_EQ(operations, (Lines{"chk_EffRot180DegForA3LD setVisible false", "chk_EffRot180DegForA3LD disable"}));
}

TEST(A3LedgerCustomisation, LeavesTheBoxForAnyOtherValues) {
  for (const auto& [flag, degree] : {std::pair(u"True", u"false"), std::pair(u"true", u"False"),
                                     std::pair(u"true", u"true"), std::pair(u"true", u""), std::pair(u"", u"false")}) {
    World world(customised(flag, degree));
    EXPECT_TRUE(world.box(rotateA3LDBox).isVisible());
    EXPECT_TRUE(world.box(rotateA3LDBox).WidgetNode::isEnabled());
  }
}

TEST(A3LedgerCustomisation, LeavesTheBoxWhenThereIsNone) {
  World world;
  EXPECT_TRUE(world.box(rotateA3LDBox).isVisible());
}

TEST(A3LedgerCustomisation, ManagesWithoutTheBox) {
  auto options = customised(u"true", u"false");
  options.withoutWidgets = {rotateA3LDBox};
  World world(options);
  EXPECT_TRUE(world.face.failures.empty());
}

TEST(A3LedgerLabel, SaysWhoRotates) {
  constexpr auto controller = u"$IDS_EFFECT_ROTATE_180_A3_LD_CONTROLLER;";
  constexpr auto plain = u"$IDS_EFFECT_ROTATE_180_A3_LD;";
  for (const auto& [setting, token] :
       {std::pair(u"True", controller), std::pair(u"true", controller), std::pair(u"1", controller),
        std::pair(u"False", plain), std::pair(u"false", plain), std::pair(u"0", plain), std::pair(u"TRUE", plain),
        std::pair(u"", plain)}) {
    auto options = builtOptions();
    options.settings = {{u"kilnworks.A3LDRotate180.rotation", std::u16string(setting)}};
    World world(options);
    EXPECT_EQ(world.box(rotateA3LDBox).label(), token);
    EXPECT_NE(world.box(rotateA3LDBox).shownLabel(), token);
  }
}

TEST(A3LedgerLabel, IsThePlainOneWithoutTheSetting) {
  EXPECT_EQ(World().box(rotateA3LDBox).label(), u"$IDS_EFFECT_ROTATE_180_A3_LD;");
}

TEST(A3LedgerLabel, IsNotSetWhereTheLayoutHasNoBox) {
  auto options = builtOptions();
  options.withoutWidgets = {rotateA3LDBox};
  World world(options);
  for (const std::string& line : widgetOperations(world.take())) EXPECT_EQ(line.find("setLabel"), line.npos) << line;
  EXPECT_TRUE(world.face.failures.empty());
}

}  // namespace
