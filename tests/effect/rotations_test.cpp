// The rotation by 180 degrees, and that of A3 and Ledger: what becomes of their boxes when the model cannot do them.
#include "plugin_object.h"
#include "tests/effect/page_effects.h"

#include <gtest/gtest.h>

namespace {

using Testing::builtOptions;
using Testing::Lines;
using Testing::mirrorBox;
using Testing::onModel;
using Testing::rotateA3LDBox;
using Testing::rotateBox;
using Testing::widgetOperations;
using Testing::with;
using Testing::World;

TEST(Rotations, CanBothBeOnAtOnce) {
  World world;
  world.box(rotateBox).click();
  EXPECT_FALSE(world.box(rotateA3LDBox).isChecked());
  world.box(rotateA3LDBox).click();
  EXPECT_EQ(world.value(u"Rotate180"), u"Rotate180");
  EXPECT_EQ(world.value(u"Rotate180ForA3LD"), u"Rotate180");
  world.box(rotateBox).click();
  EXPECT_TRUE(world.box(rotateA3LDBox).isChecked());
}

// The operations on both rotation boxes when one of the properties loses its "on" value.
Lines afterForbidding(World& world, const std::u16string& property) {
  world.take();
  world.preferences.setAvailable(property, u"Rotate180", false);
  return widgetOperations(world.take());
}

TEST(Rotate180, UnavailableIsGreyedAndOnKVTHidden) {
  World standard;
  EXPECT_EQ(afterForbidding(standard, u"Rotate180"), Lines{"chk_EffRot180Deg disable"});
  World kvt(onModel("kvt"));
  EXPECT_EQ(afterForbidding(kvt, u"Rotate180"), (Lines{"chk_EffRot180Deg disable", "chk_EffRot180Deg hide"}));
}

TEST(Rotate180, UnavailableIsOnlyGreyedOnTheFamiliesThatHideTheOther) {
  for (const char* model : {"tarra", "varnholt", "quellspire", "tev"}) {
    World world(onModel(model));
    EXPECT_EQ(afterForbidding(world, u"Rotate180"), Lines{"chk_EffRot180Deg disable"}) << model;
  }
}

TEST(Rotate180, AvailableAgainIsEnabled) {
  World world;
  world.preferences.setAvailable(u"Rotate180", u"Rotate180", false);
  world.take();
  world.preferences.setAvailable(u"Rotate180", u"Rotate180", true);
  EXPECT_EQ(widgetOperations(world.take()), Lines{"chk_EffRot180Deg enable"});
}

TEST(Rotate180ForA3LD, UnavailableIsGreyedAndHiddenOnTheModelsThatCannotDoIt) {
  for (const char* model : {"kvt", "tarra", "varnholt", "quellspire", "tev"}) {
    World world(onModel(model));
    EXPECT_EQ(afterForbidding(world, u"Rotate180ForA3LD"),
              (Lines{"chk_EffRot180DegForA3LD disable", "chk_EffRot180DegForA3LD hide"}))
        << model;
  }
  for (const char* model : {"standard", "pclxl", "pscript", "monochrome"}) {
    World world(onModel(model));
    EXPECT_EQ(afterForbidding(world, u"Rotate180ForA3LD"), Lines{"chk_EffRot180DegForA3LD disable"}) << model;
  }
}

TEST(Rotate180ForA3LD, UnavailableIsOnlyGreyedForNamesThatOnlyResemble) {
  for (const auto& [property, name] : {std::pair(u"ModelNumber", u"KVT"), std::pair(u"ModelSelection", u"Tarra"),
                                       std::pair(u"ModelSelection", u"Varnholt"),
                                       std::pair(u"ModelSelection", u"Quellspire"), std::pair(u"Product", u"Tev")}) {
    World same(with(property, name));
    EXPECT_EQ(afterForbidding(same, u"Rotate180ForA3LD").size(), 2U);
    const std::u16string whole(name);
    std::u16string lower = whole;
    for (char16_t& unit : lower) unit = static_cast<char16_t>(unit | 0x20);
    for (const auto& other : {whole + u"2", u"New " + whole, whole + u" ", whole.substr(1), lower}) {
      World world(with(property, other));
      EXPECT_EQ(afterForbidding(world, u"Rotate180ForA3LD"), Lines{"chk_EffRot180DegForA3LD disable"});
    }
  }
}

TEST(Rotate180ForA3LD, AvailableAgainIsEnabledButNotShown) {
  World world(onModel("varnholt"));
  world.preferences.setAvailable(u"Rotate180ForA3LD", u"Rotate180", false);
  world.take();
  world.preferences.setAvailable(u"Rotate180ForA3LD", u"Rotate180", true);
  EXPECT_EQ(widgetOperations(world.take()), Lines{"chk_EffRot180DegForA3LD enable"});
  EXPECT_FALSE(world.box(rotateA3LDBox).isVisible());
}

TEST(Rotations, IgnoreTheOptionNone) {
  for (const auto* property : {u"Rotate180", u"Rotate180ForA3LD"}) {
    World world(onModel("kvt"));
    world.take();
    world.preferences.setAvailable(property, u"None", false);
    EXPECT_TRUE(widgetOperations(world.take()).empty());
  }
}

TEST(Rotations, TakeAnyOptionButNoneForTheirOwn) {
  World world;
  world.take();
  world.preferences.setAvailable(u"Rotate180", u"Rotate90", false);
  EXPECT_EQ(widgetOperations(world.take()), Lines{"chk_EffRot180Deg disable"});
}

TEST(Rotations, IgnoreEveryOtherProperty) {
  Testing::PluginObject object;
  auto& transforms = object.open(object.world.host).pageTransforms();
  std::vector<Refhost::TraceEvent> events;
  object.world.trace.listen([&events](const Refhost::TraceEvent& event) { events.push_back(event); });
  for (const auto* property : {u"MirrorImage", u"rotate180", u"Rotate180 ", u""}) {
    Kiln::ModelEnableChange change{Refhost::text(property), Refhost::text(u"Rotate180"), false};
    transforms.DisableRotate180(change);
  }
  EXPECT_TRUE(widgetOperations(events).empty());
  object.plugin.reset();
}

// A model need not say what no rule of its own asks for.
TEST(Rotate180ForA3LD, UnavailableIsOnlyGreyedOnAModelWithoutTheFacts) {
  Testing::TemporaryFolder folder;
  const auto resources = folder.path / "resources";
  Testing::copyResources(resources);
  const auto file = resources / "models" / "standard.xml";
  std::string model = Testing::bytesOf(file);
  for (const char* fact : {"ModelNumber", "ModelSelection", "Product", "OutputPDL", "DriverTech"}) {
    const auto start = model.find(std::string("<property name=\"") + fact + "\"");
    ASSERT_NE(start, model.npos) << fact;
    model.erase(start, model.find("/>", start) + 2 - start);
  }
  Testing::writeFile(file, model);
  auto options = builtOptions();
  options.resources = resources;
  World world(options);
  EXPECT_TRUE(world.box(mirrorBox).isVisible());
  EXPECT_EQ(afterForbidding(world, u"Rotate180ForA3LD"), Lines{"chk_EffRot180DegForA3LD disable"});
  EXPECT_TRUE(world.face.failures.empty());
}

}  // namespace
