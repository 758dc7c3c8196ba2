// Negative and mirror image: what becomes of their boxes when the model cannot do them.
#include "tests/effect/page_effects.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Testing::Lines;
using Testing::mirrorBox;
using Testing::negativeBox;
using Testing::onModel;
using Testing::widgetOperations;
using Testing::with;
using Testing::World;

TEST(NegativeImage, UnavailableIsUncheckedThenGreyed) {
  World world(with(u"NegativeImage", u"Negative"));
  world.take();
  world.preferences.setAvailable(u"NegativeImage", u"Negative", false);
  EXPECT_EQ(widgetOperations(world.take()),
            (Lines{"ePTKWPageNegativeImage setChecked false", "ePTKWPageNegativeImage disable"}));
  EXPECT_TRUE(world.box(negativeBox).WidgetNode::isVisible());
  world.preferences.setAvailable(u"NegativeImage", u"Negative", true);
  EXPECT_EQ(widgetOperations(world.take()),
            (Lines{"ePTKWPageNegativeImage enable", "ePTKWPageNegativeImage setChecked true"}));
}

TEST(NegativeImage, AvailableAgainIsMarkedAsItPrints) {
  World world(onModel("kvt"));
  world.box(negativeBox).click();
  world.preferences.setAvailable(u"NegativeImage", u"Negative", false);
  EXPECT_FALSE(world.box(negativeBox).isChecked());
  world.preferences.setAvailable(u"NegativeImage", u"Negative", true);
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
  EXPECT_TRUE(world.box(negativeBox).isChecked());
}

TEST(NegativeImage, OnKVTIsMarkedAsItPrintsAfterMonochromeAndBack) {
  World world(onModel("kvt"));
  const auto isAsPrinted = [&world] {
    const auto values = world.preferences.model().printedValues();
    const auto printed = std::find_if(values.begin(), values.end(), [](const auto& pair) {
                           return pair.first == u"NegativeImage";
                         })->second;
    return world.box(negativeBox).isChecked() == (printed != u"None");
  };
  world.box(negativeBox).click();
  world.preferences.set(u"ColourMode", u"Monochrome");
  EXPECT_EQ(world.value(u"NegativeImage"), u"None");
  EXPECT_TRUE(isAsPrinted());
  world.preferences.set(u"ColourMode", u"Colour");
  EXPECT_TRUE(isAsPrinted());
  world.preferences.set(u"NegativeImage", u"Negative");
  EXPECT_TRUE(isAsPrinted());
  for (int i = 0; i < 3; ++i) {
    world.preferences.undo();
    EXPECT_TRUE(isAsPrinted()) << i;
  }
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
}

TEST(NegativeImage, UnavailableOnKVTIsHiddenToo) {
  World world(onModel("kvt"));
  world.box(negativeBox).click();
  world.take();
  world.preferences.setAvailable(u"NegativeImage", u"Negative", false);
  EXPECT_EQ(widgetOperations(world.take()), (Lines{"ePTKWPageNegativeImage setChecked false",
                                                   "ePTKWPageNegativeImage disable", "ePTKWPageNegativeImage hide"}));
}

TEST(NegativeImage, AvailableAgainOnKVTIsEnabledButNotShown) {
  World world(onModel("kvt"));
  world.preferences.setAvailable(u"NegativeImage", u"Negative", false);
  world.preferences.setAvailable(u"NegativeImage", u"Negative", true);
  EXPECT_TRUE(world.box(negativeBox).WidgetNode::isEnabled());
  EXPECT_FALSE(world.box(negativeBox).isVisible());
}

TEST(NegativeImage, IgnoresOtherOptions) {
  World world;
  world.take();
  world.preferences.setAvailable(u"NegativeImage", u"None", false);
  world.preferences.setAvailable(u"NegativeImage", u"negative", false);
  EXPECT_TRUE(widgetOperations(world.take()).empty());
}

TEST(MirrorImage, UnavailableIsOutOfSightAndKeepsItsMark) {
  World world(with(u"MirrorImage", u"MirrorImage"));
  world.take();
  world.preferences.setAvailable(u"MirrorImage", u"MirrorImage", false);
  EXPECT_EQ(widgetOperations(world.take()), Lines{"ePTKWPageMirrorImage setVisible false"});
  EXPECT_TRUE(world.box(mirrorBox).isChecked());
  EXPECT_TRUE(world.box(mirrorBox).WidgetNode::isEnabled());
  world.preferences.setAvailable(u"MirrorImage", u"MirrorImage", true);
  EXPECT_EQ(widgetOperations(world.take()),
            (Lines{"ePTKWPageMirrorImage setVisible true", "ePTKWPageMirrorImage enable",
                   "ePTKWPageMirrorImage setChecked true"}));
}

TEST(MirrorImage, UnavailableOnKVTIsHiddenToo) {
  World world(onModel("kvt"));
  world.take();
  world.preferences.setAvailable(u"MirrorImage", u"MirrorImage", false);
  EXPECT_EQ(widgetOperations(world.take()),
            (Lines{"ePTKWPageMirrorImage setVisible false", "ePTKWPageMirrorImage hide"}));
}

TEST(MirrorImage, AvailableAgainIsShownWhereItIsHiddenFromTheStart) {
  for (const char* model : {"kvt", "pclxl", "pscript"}) {
    World world(onModel(model));
    ASSERT_FALSE(world.box(mirrorBox).isVisible()) << model;
    world.preferences.setAvailable(u"MirrorImage", u"MirrorImage", false);
    world.take();
    world.preferences.setAvailable(u"MirrorImage", u"MirrorImage", true);
    EXPECT_EQ(widgetOperations(world.take()),
              (Lines{"ePTKWPageMirrorImage setVisible true", "ePTKWPageMirrorImage enable"}))
        << model;
    EXPECT_TRUE(world.box(mirrorBox).isVisible()) << model;
  }
}

TEST(MirrorImage, IgnoresOtherOptions) {
  World world;
  world.take();
  world.preferences.setAvailable(u"MirrorImage", u"None", false);
  EXPECT_TRUE(widgetOperations(world.take()).empty());
}

TEST(MirrorImage, IsHiddenFromTheStartOnKVTAndForPCLXLAndPSCRIPT) {
  for (const char* model : {"kvt", "pclxl", "pscript"}) {
    World world(onModel(model));
    EXPECT_FALSE(world.box(mirrorBox).isVisible()) << model;
  }
  for (const auto& [property, value] :
       {std::pair(u"ModelNumber", u"KVT"), std::pair(u"OutputPDL", u"PCLXL"), std::pair(u"DriverTech", u"PSCRIPT")}) {
    World world(with(property, value));
    EXPECT_FALSE(world.box(mirrorBox).isVisible());
  }
}

TEST(MirrorImage, IsShownOnOtherModelsAndForNamesThatOnlyResemble) {
  for (const char* model : {"standard", "tarra", "varnholt", "quellspire", "tev", "monochrome"})
    EXPECT_TRUE(World(onModel(model)).box(mirrorBox).isVisible()) << model;
  for (const auto& [property, value] : {std::pair(u"ModelNumber", u"kvt"), std::pair(u"ModelNumber", u"KVT "),
                                        std::pair(u"OutputPDL", u"PCLXL6"), std::pair(u"DriverTech", u"pscript")})
    EXPECT_TRUE(World(with(property, value)).box(mirrorBox).isVisible());
}

}  // namespace
