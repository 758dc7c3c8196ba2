// What all page effects have in common: boxes, properties and availability.
#include "formats/text.h"
#include "plugin_object.h"
#include "tests/effect/page_effects.h"

#include <gtest/gtest.h>

#include <iterator>
#include <optional>

namespace {

using Testing::Lines;
using Testing::mirrorBox;
using Testing::negativeBox;
using Testing::rotateA3LDBox;
using Testing::rotateBox;
using Testing::transitions;
using Testing::widgetOperations;
using Testing::with;
using Testing::World;

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

}  // namespace
