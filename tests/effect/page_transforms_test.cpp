// Mirror image, negative image and the rotations: boxes, properties and model rules.
#include "formats/text.h"
#include "plugin_object.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <iterator>
#include <optional>

namespace {

using Testing::builtOptions;
using Testing::transitions;
using Testing::widgetOperations;
using Testing::World;

constexpr auto negativeBox = u"ePTKWPageNegativeImage";
constexpr auto mirrorBox = u"ePTKWPageMirrorImage";
constexpr auto rotateBox = u"chk_EffRot180Deg";
constexpr auto rotateA3LDBox = u"chk_EffRot180DegForA3LD";

using Lines = std::vector<std::string>;

Refhost::Options onModel(const std::string& model) {
  auto options = builtOptions();
  options.model = model;
  return options;
}

Refhost::Options with(std::u16string property, std::u16string value) {
  auto options = builtOptions();
  options.properties = {{std::move(property), std::move(value)}};
  return options;
}

// A box of the layout as one more effect, without handlers of its own.
constexpr Formats::PageEffect firstPageOnly{u"FirstPageOnly", u"True", u"ePTKWPageWatermark_PrintFirstPageOnly"};

class PageTransform : public testing::TestWithParam<Formats::PageEffect> {
 protected:
  const std::u16string property{GetParam().property};
  const std::u16string onValue{GetParam().on};
  const std::u16string id{GetParam().box};
};

TEST_P(PageTransform, ClickSendsOneTransitionAndTheBoxFollowsTheProperty) {
  World world;
  world.take();
  world.box(id).click();
  EXPECT_EQ(world.value(property), onValue);
  const auto events = world.take();
  EXPECT_EQ(transitions(events), Lines{Formats::toUtf8(property + u"=" + onValue)});
  EXPECT_EQ(widgetOperations(events), Lines{Formats::toUtf8(id + u" setChecked true")});
  EXPECT_TRUE(world.box(id).isChecked());

  world.box(id).click();
  EXPECT_EQ(world.value(property), u"None");
  EXPECT_EQ(transitions(world.take()), Lines{Formats::toUtf8(property + u"=None")});
  EXPECT_FALSE(world.box(id).isChecked());
}

TEST_P(PageTransform, AnyValueButNoneChecksTheBox) {
  World world;
  for (const auto* value : {u"none", u"Something", u"NONE"}) {
    world.preferences.set(property, u"None");
    EXPECT_FALSE(world.box(id).isChecked());
    world.preferences.set(property, value);
    EXPECT_TRUE(world.box(id).isChecked());
  }
}

TEST_P(PageTransform, StartsAsTheModelHasIt) {
  World off;
  EXPECT_FALSE(off.box(id).isChecked());
  World on(with(property, onValue));
  EXPECT_TRUE(on.box(id).isChecked());
}

TEST_P(PageTransform, UnavailableCannotBeClickedAndAvailableAgainCan) {
  World world;
  world.preferences.setAvailable(property, onValue, false);
  EXPECT_FALSE(world.box(id).WidgetNode::isEnabled() && world.box(id).isVisible());
  world.preferences.setAvailable(property, onValue, true);
  EXPECT_TRUE(world.box(id).WidgetNode::isEnabled() && world.box(id).isVisible());
}

INSTANTIATE_TEST_SUITE_P(All, PageTransform, testing::ValuesIn(Formats::PageEffects::all),
                         [](const auto& instance) { return Formats::toUtf8(instance.param.property); });

// The tab without its plug-in, with the effects and one that is only listed among them.
class ListedEffect : public testing::Test {
 protected:
  ListedEffect() {
    gui.load(Formats::Address::tabLayout);
    tab.preferences = object.gui;
    effects.push_back(firstPageOnly);
    transforms.emplace(tab, effects);
    transforms->connectEnableChanges(model);
    transforms->connectSelectionChanges(model);
    transforms->bindBoxes();
    object.world.trace.listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
  }

  Lines afterForbidding() {
    events.clear();
    model.setAvailable(firstPageOnly.property, firstPageOnly.on, false);
    return widgetOperations(events);
  }

  Refhost::CheckBox& box() { return dynamic_cast<Refhost::CheckBox&>(*gui.find(firstPageOnly.box)); }

  Testing::PluginObject object;
  Refhost::Gui& gui = *object.gui;
  Refhost::PropertyModel& model = *object.world.manager->model;
  Kiln::XUL::TabHost tab{object.world.host, object.world.manager, {}};
  std::vector<Formats::PageEffect> effects{std::begin(Formats::PageEffects::all), std::end(Formats::PageEffects::all)};
  std::optional<Kiln::XUL::PageTransforms> transforms;
  std::vector<Refhost::TraceEvent> events;
};

TEST_F(ListedEffect, IsWrittenByAClickAndShownByItsBox) {
  box().click();
  EXPECT_EQ(transitions(events), Lines{"FirstPageOnly=True"});
  EXPECT_TRUE(box().isChecked());
  model.submit({{u"FirstPageOnly", u""}});
  EXPECT_TRUE(box().isChecked());
  model.submit({{u"FirstPageOnly", u"None"}});
  EXPECT_FALSE(box().isChecked());
}

TEST_F(ListedEffect, UnavailableIsGreyedAndOnKVTHidden) {
  EXPECT_EQ(afterForbidding(), Lines{"ePTKWPageWatermark_PrintFirstPageOnly disable"});
  model.setAvailable(firstPageOnly.property, u"None", false);
  model.setAvailable(firstPageOnly.property, firstPageOnly.on, true);
  EXPECT_EQ(widgetOperations(events).back(), "ePTKWPageWatermark_PrintFirstPageOnly enable");
  model.submit({{u"ModelNumber", u"KVT"}});
  EXPECT_EQ(afterForbidding(),
            (Lines{"ePTKWPageWatermark_PrintFirstPageOnly disable", "ePTKWPageWatermark_PrintFirstPageOnly hide"}));
}

TEST(PageTransforms, AnEmptyValueLeavesTheBoxAsItWas) {
  for (const auto& [property, onValue, id] :
       {std::tuple(u"NegativeImage", u"Negative", negativeBox), std::tuple(u"MirrorImage", u"MirrorImage", mirrorBox),
        std::tuple(u"Rotate180", u"Rotate180", rotateBox)}) {
    World world;
    world.preferences.set(property, u"");
    EXPECT_FALSE(world.box(id).isChecked());
    world.preferences.set(property, onValue);
    world.preferences.set(property, u"");
    EXPECT_TRUE(world.box(id).isChecked());
  }
}

TEST(PageTransforms, AnEmptyValueChecksTheA3LedgerBox) {
  World world;
  world.preferences.set(u"Rotate180ForA3LD", u"");
  EXPECT_TRUE(world.box(rotateA3LDBox).isChecked());
}

TEST(PageTransforms, BothRotationsCanBeOnAtOnce) {
  World world;
  world.box(rotateBox).click();
  EXPECT_FALSE(world.box(rotateA3LDBox).isChecked());
  world.box(rotateA3LDBox).click();
  EXPECT_EQ(world.value(u"Rotate180"), u"Rotate180");
  EXPECT_EQ(world.value(u"Rotate180ForA3LD"), u"Rotate180");
  world.box(rotateBox).click();
  EXPECT_TRUE(world.box(rotateA3LDBox).isChecked());
}

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
