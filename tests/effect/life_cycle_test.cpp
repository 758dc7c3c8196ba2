// How the plug-in is brought to life, and what it connects to.
#include "formats/names.h"
#include "formats/text.h"
#include "host/profiles/profile_event.h"
#include "plugin_object.h"
#include "tests/support/host_around.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <span>

namespace {

using Refhost::Mode;
using testing::AllOf;
using Testing::builtOptions;
using Testing::connections;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Testing::widgetOperations;
using Testing::World;

Refhost::Options inMode(Mode mode, bool active = true) {
  auto options = builtOptions();
  options.mode = mode;
  options.active = active;
  return options;
}

std::vector<std::string> loaded(const World& world) {
  std::vector<std::string> urls;
  for (const auto& event : world.events)
    if (event.op == "load") urls.push_back(Testing::member(event, "url"));
  return urls;
}

// The connections whose signal has this prefix, in order.
std::vector<std::string> connectionsOf(const World& world, const std::string& signal) {
  auto all = connections(world.events);
  std::erase_if(all, [&signal](const std::string& line) { return !line.starts_with(signal + " "); });
  return all;
}

// The connections and the operations on widgets, in one order.
std::vector<std::string> steps(const std::vector<Refhost::TraceEvent>& events) {
  std::vector<std::string> lines;
  for (const auto& event : events)
    for (const auto& part : {connections({event}), widgetOperations({event})})
      lines.insert(lines.end(), part.begin(), part.end());
  return lines;
}

// The `count` lines from the one that equals `first` on.
std::vector<std::string> linesFrom(const std::vector<std::string>& lines, const std::string& first, int count) {
  const auto found = std::find(lines.begin(), lines.end(), first);
  return {found, found + std::min<std::ptrdiff_t>(count, lines.end() - found)};
}

const std::vector<std::string> tabLayout = {"chrome://effect/content/tab_effect.xul"};

TEST(ConfigureUI, LoadsTheTabInDocPropAndPDC) {
  EXPECT_EQ(loaded(World(inMode(Mode::docProp))), tabLayout);
  EXPECT_EQ(loaded(World(inMode(Mode::pdc))), tabLayout);
}

TEST(ConfigureUI, LoadsTheTabInPDCEvenWhenThePluginIsInactive) {
  EXPECT_EQ(loaded(World(inMode(Mode::pdc, false))), tabLayout);
}

TEST(ConfigureUI, DoesNothingInDocPropWhenThePluginIsInactive) {
  const World world(inMode(Mode::docProp, false));
  EXPECT_TRUE(loaded(world).empty());
  EXPECT_TRUE(connections(world.events).empty());
}

TEST(ConfigureUI, LoadsNoLayoutInPrePrintAndWaitsForThePrintTimeStep) {
  World world(inMode(Mode::prePrint));
  EXPECT_TRUE(loaded(world).empty());
  EXPECT_EQ(connections(world.events), std::vector<std::string>{"gui-ready GUI"});
  EXPECT_TRUE(world.preferences.gui()->tabs().empty());
}

TEST(ConfigureUI, DoesNothingInPrePrintWhenThePluginIsInactive) {
  EXPECT_TRUE(connections(World(inMode(Mode::prePrint, false)).events).empty());
}

TEST(ConfigureUI, DoesNothingInAnyOtherMode) {
  for (const char16_t* mode : {u"docprop", u"PDC ", u"", u"Preprint"}) {
    auto options = builtOptions();
    options.settings = {{u"UIMode", std::u16string(mode)}};
    const World world(options);
    EXPECT_TRUE(connections(world.events).empty());
    EXPECT_TRUE(loaded(world).empty());
  }
}

TEST(ConfigureUI, LoadsTheLayoutBeforeItConnectsTheReadySignal) {
  const World world;
  const auto at = [&world](const std::string& op) {
    return std::find_if(world.events.begin(), world.events.end(), [&op](const auto& event) { return event.op == op; });
  };
  EXPECT_LT(at("load"), at("connect"));
  EXPECT_EQ(connections(world.events).front(), "gui-ready GUI");
}

TEST(RootlessActivation, FollowsTheWatermarkSelectionAndNothingElse) {
  const World world(inMode(Mode::rootless));
  EXPECT_EQ(connections(world.events), std::vector<std::string>{"selection-change WatermarkSel"});
}

TEST(RootlessActivation, NeverAsksToBeAskedAgain) {
  for (const bool isActive : {true, false}) {
    Testing::PluginObject object;
    object.world.host.active = isActive;
    EXPECT_FALSE(object.make(object.world.host).rootlessActivation());
  }
}

TEST(RootlessActivation, ConnectsNothingWhenThePluginIsInactive) {
  EXPECT_TRUE(connections(World(inMode(Mode::rootless, false)).events).empty());
}

// The lines, with one of each later page effect after the last one of those that are among them.
std::vector<std::string> withLaterEffects(const std::string& signal, std::vector<std::string> lines) {
  auto place = std::find(lines.begin(), lines.end(), signal + " Rotate180ForA3LD");
  for (const auto& effect : std::span(Formats::PageEffects::all).subspan(4))
    place = lines.insert(place + 1, signal + " " + Formats::toUtf8(effect.property));
  return lines;
}

TEST(OnGUIReady, ConnectsTheEnableChangesInOrder) {
  EXPECT_EQ(connectionsOf(World(), "enable-change"),
            withLaterEffects("enable-change",
                             {"enable-change Watermark", "enable-change FirstPageOnly",
                              "enable-change WatermarkOccurance", "enable-change OverlayImage",
                              "enable-change NegativeImage", "enable-change MirrorImage", "enable-change Rotate180",
                              "enable-change Rotate180ForA3LD", "enable-change OverlayOccurance"}));
}

TEST(OnGUIReady, ConnectsTheSelectionChangesInOrder) {
  EXPECT_EQ(
      connectionsOf(World(), "selection-change"),
      withLaterEffects("selection-change",
                       {"selection-change WatermarkSel", "selection-change OverlaySel",
                        "selection-change NegativeImage", "selection-change MirrorImage", "selection-change Rotate180",
                        "selection-change Rotate180ForA3LD", "selection-change FirstPageOnly",
                        "selection-change WatermarkOccurance", "selection-change OverlayOccurance",
                        "selection-change OverlayLayering", "selection-change OverlayImageCreate"}));
}

TEST(OnGUIReady, BindsSidesThenPropertiesThenPanelThenBoxesThenProfiles) {
  const auto all = connections(World().events);
  const std::vector<std::string> inOrder = {"change ePTKWPageWatermark_PrintFirstPageOnly",
                                            "change ePTKWJobOverlayImage_Layering",
                                            "enable-change Watermark",
                                            "enable-change OverlayOccurance",
                                            "selection-change WatermarkSel",
                                            "selection-change OverlayImageCreate",
                                            "help TabPanel",
                                            "pre-accept TabPanel",
                                            "click chk_EffRot180Deg",
                                            "click chk_EffRot180DegForA3LD",
                                            "click ePTKWPageNegativeImage",
                                            "click ePTKWPageMirrorImage",
                                            "profile-import PropertyManager",
                                            "profile-export PropertyManager"};
  auto place = all.begin();
  for (const std::string& line : inOrder) {
    place = std::find(place, all.end(), line);
    ASSERT_NE(place, all.end()) << line << " is missing or too early";
  }
  EXPECT_EQ(all.back(), "profile-export PropertyManager");
}

// A host whose alignments tell what they are bound to.
class LeftBoxes final : public Testing::HostAround {
 public:
  LeftBoxes(Kiln::Host& answering, std::vector<std::string>& toldLines) : HostAround(answering), lines(toldLines) {}

  Kiln::SmartPtr<Kiln::XUL::Alignment> alignment(std::int32_t flags) override {
    ++made;
    return Refhost::make<Told>("alignment " + std::to_string(made) + " with " + std::to_string(flags) + " bound to ",
                               lines);
  }

  int made = 0;

 private:
  class Told final : public Kiln::XUL::Alignment {
   public:
    Told(std::string lineStart, std::vector<std::string>& toldLines) : start(std::move(lineStart)), lines(toldLines) {}
    void bind(Kiln::SmartPtr<Kiln::XUL::Widget> container) override {
      const std::u16string id = container ? container->id().str() : u"nothing";
      lines.push_back(start + std::string(id.begin(), id.end()));
    }

   private:
    std::string start;
    std::vector<std::string>& lines;
  };

  std::vector<std::string>& lines;
};

TEST(OnGUIReady, BindsTheLeftBoxesOfBothSidesBeforeAnythingElse) {
  std::vector<std::string> lines;
  Testing::PluginObject object;
  object.world.trace.listen([&lines](const Refhost::TraceEvent& event) {
    for (const std::string& line : steps({event})) lines.push_back(line);
  });
  LeftBoxes host(object.world.host, lines);
  object.open(host);
  const auto isBinding = [](const std::string& line) { return line.starts_with("alignment"); };
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(), isBinding), 2);
  lines.resize(4);
  EXPECT_THAT(lines, ElementsAre("gui-ready GUI", "alignment 1 with 1 bound to effect_common_leftbox",
                                 "alignment 2 with 1 bound to effect_common_leftbox", "change lst_selectedWatermark"));
  EXPECT_EQ(host.made, 2);
  object.plugin.reset();
}

TEST(OnGUIReady, SwitchesTheA3LedgerBoxOffBetweenTheSidesAndTheProperties) {
  auto options = builtOptions();
  options.customisation = {{u"XMLCustomisation", u"true"}, {u"A3LD180Degree", u"false"}};
  EXPECT_THAT(linesFrom(steps(World(options).events), "change ePTKWJobOverlayImage_PrintPerPage", 4),
              ElementsAre("change ePTKWJobOverlayImage_PrintPerPage", "chk_EffRot180DegForA3LD setVisible false",
                          "chk_EffRot180DegForA3LD disable", "enable-change Watermark"));
}

TEST(OnGUIReady, HidesTheMirrorImageOnceItsClickIsConnected) {
  auto options = builtOptions();
  options.model = "kvt";
  EXPECT_THAT(linesFrom(steps(World(options).events), "click ePTKWPageMirrorImage", 2),
              ElementsAre("click ePTKWPageMirrorImage", "ePTKWPageMirrorImage hide"));
}

TEST(OnGUIReady, LinesUpTheLeftBox) {
  World world;
  EXPECT_TRUE(world.widget<Refhost::Container>(u"effect_common_leftbox").sharesColumns());
}

TEST(OnGUIReady, LeavesTheContentsOfTheLeftBoxWithoutTheBox) {
  auto options = builtOptions();
  options.withoutWidgets = {u"effect_common_leftbox"};
  World world(options);
  world.box(u"ePTKWPageWatermark_PrintFirstPageOnly").click();
  EXPECT_EQ(world.value(u"FirstPageOnly"), u"True");
}

TEST(OnGUIReady, DisablesTheSecurityPatternsInPDCAlone) {
  for (const Mode mode : {Mode::docProp, Mode::pdc}) {
    World world(inMode(mode));
    for (const auto* id : {u"but_EffSecPatEdt", u"but_EffSecPatDel", u"ePTKWJobOverlayImage_Layering_HSP_Overlay"}) {
      const Refhost::WidgetNode* widget = world.preferences.gui()->find(id);
      ASSERT_NE(widget, nullptr);
      EXPECT_EQ(widget->isEnabled(), mode == Mode::docProp);
    }
  }
}

TEST(OnGUIReady, DisablesTheSecurityPatternsInOrderAndLast) {
  EXPECT_THAT(linesFrom(steps(World(inMode(Mode::pdc)).events), "profile-export PropertyManager", 4),
              ElementsAre("profile-export PropertyManager", "but_EffSecPatEdt disable", "but_EffSecPatDel disable",
                          "ePTKWJobOverlayImage_Layering_HSP_Overlay disable"));
}

// Everything that the tab follows happens once.
void changeEverything(World& world) {
  for (const auto& property : world.preferences.model().description().properties)
    for (const auto& option : property.options) {
      world.preferences.set(property.name, option);
      world.preferences.setAvailable(property.name, option, false);
      world.preferences.setAvailable(property.name, option, true);
    }
}

// Every id of the tab, so that each can be left out in turn.
std::vector<std::u16string> idsOfTheTab() {
  World world;
  std::vector<std::u16string> ids;
  Refhost::walk(*world.preferences.gui()->tabs().back().root, [&ids](Refhost::WidgetNode& widget) {
    if (!widget.id().empty() && widget.parent() != nullptr) ids.push_back(widget.id());
  });
  return ids;
}

TEST(OnGUIReady, ManagesWithoutAnyOneWidgetInEveryMode) {
  const auto ids = idsOfTheTab();
  ASSERT_GT(ids.size(), 20U);
  for (const Mode mode : {Mode::docProp, Mode::pdc})
    for (const auto& id : ids) {
      auto options = inMode(mode);
      options.withoutWidgets = {id};
      World world(options);
      EXPECT_EQ(world.preferences.gui()->find(id), nullptr);
      changeEverything(world);
      EXPECT_TRUE(world.face.failures.empty());
    }
}

// As one that is missing.
TEST(OnGUIReady, LeavesAloneAWidgetOfAnotherKind) {
  Testing::TemporaryFolder folder;
  const auto resources = folder.path / "resources";
  Testing::copyResources(resources);
  const auto file = resources / "effect" / "content" / "tab_effect.xul";
  const std::string layout = Testing::bytesOf(file);
  for (const auto& [tag, id] :
       {std::pair("checkbox", "chk_EffRot180Deg"), std::pair("checkbox", "chk_EffRot180DegForA3LD"),
        std::pair("checkbox", "ePTKWPageNegativeImage"), std::pair("checkbox", "ePTKWPageMirrorImage"),
        std::pair("checkbox", "ePTKWPageWatermark_PrintFirstPageOnly"),
        std::pair("checkbox", "ePTKWPageWatermark_PrintPerPage"),
        std::pair("checkbox", "ePTKWJobOverlayImage_Layering"),
        std::pair("checkbox", "ePTKWJobOverlayImage_PrintPerPage"), std::pair("listbox", "lst_selectedWatermark"),
        std::pair("menulist", "cmb_EffOverlay"), std::pair("button", "btn_WMAdd"), std::pair("button", "btn_WMEdit"),
        std::pair("button", "btn_WMDel"), std::pair("button", "btn_OvlDel"), std::pair("button", "but_EffDet"),
        std::pair("image", "img_EffOverlay")}) {
    const std::string own = std::string("<") + tag + " id=\"" + id + "\"";
    const auto place = layout.find(own);
    ASSERT_NE(place, layout.npos) << id;
    // A <caption> takes the attributes of all of them but these.
    std::string changed = std::string(layout).replace(place, own.size(), std::string("<caption id=\"") + id + "\"");
    if (const auto rows = changed.find(" rows=\"6\""); rows != changed.npos) changed.erase(rows, 9);
    Testing::writeFile(file, changed);
    auto options = builtOptions();
    options.resources = resources;
    World world(options);
    EXPECT_THAT(connections(world.events),
                AllOf(Not(Contains(std::string("click ") + id)), Not(Contains(std::string("change ") + id))));
    changeEverything(world);
    EXPECT_TRUE(world.face.failures.empty()) << id;
  }
}

TEST(Help, IsShownForTheEffectTab) {
  World world;
  world.preferences.help();
  EXPECT_EQ(world.face.helpTopics, std::vector<std::u16string>{u"pro_tab_effect"});
}

TEST(Help, IsNotShownForAnyOtherTab) {
  World world;
  for (const auto* id : {u"pro_tab_device", u"pro_tab_effec", u"pro_tab_effect ", u"Pro_tab_effect"}) {
    world.preferences.selectTab(id);
    world.preferences.help();
  }
  EXPECT_TRUE(world.face.helpTopics.empty());
}

TEST(Plugin, ExportsNothingWhereTheHostDoesNotSayWhetherItShould) {
  Testing::PluginObject object;
  object.open(object.world.host);
  object.world.writes.clear();
  object.world.manager->profileExport->fire(
      Refhost::make<Refhost::ProfileEvent>(object.world.files, "p", std::nullopt));
  EXPECT_TRUE(object.world.writes.empty());
}

TEST(Plugin, GivesAllItsMemoryBackWhenThePreferencesAreGone) {
  const long before = Refhost::heap().blocks();
  {
    World world;
  }
  EXPECT_EQ(Refhost::heap().blocks(), before);
}

TEST(Plugin, OutlivesItsWidgetsWhenThePreferencesAreAccepted) {
  World world;
  EXPECT_TRUE(world.preferences.accept());
  EXPECT_EQ(world.preferences.gui(), nullptr);
  world.preferences.set(u"NegativeImage", u"Negative");
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
  EXPECT_TRUE(world.face.failures.empty());
}

}  // namespace
