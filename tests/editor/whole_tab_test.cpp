// The editor in the plug-in, opened by the tab's buttons: files, failures, and replacement.
#include "editor_world.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;
using Testing::World;

// The preferences with a new home, with the first built-in watermark selected.
class Tab {
 public:
  explicit Tab(Refhost::Options options = Testing::builtOptions()) {
    options.home = folder.path;
    world.emplace(std::move(options));
    world->preferences.set(u"WatermarkSel", u"1");
  }

  // The user's input in the editor that the button opens.
  void open(const char16_t* button, const std::function<void(Hand&)>& deeds) {
    world->face.onModal = [&](Refhost::Dialog& dialog) {
      Hand hand(dialog, {});
      deeds(hand);
    };
    world->widget<Refhost::Button>(button).click();
  }

  std::string value(std::u16string_view property) { return Formats::toUtf8(world->value(property)); }

  Testing::TemporaryFolder folder;
  std::optional<World> world;
};

TEST(EditorInTheTab, WritesWhatWasEditedAndItsDetails) {
  Tab tab;
  tab.open(u"btn_WMEdit", [](Hand& hand) {
    hand.type("txt_EffWMAngle", "-30");
    hand.type("txt_EffWMFonSiz", "200");
    hand.pick(0x123456);
    hand.click("LR");
    hand.choose("rad_EffWMDrawAsOut");
    EXPECT_TRUE(hand.accept());
  });
  EXPECT_EQ(tab.value(u"WatermarkTextAngle"), "390");
  EXPECT_EQ(tab.value(u"WatermarkTextFontSize"), "200");
  EXPECT_EQ(tab.value(u"WatermarkTextColour"), "#00123456");
  EXPECT_EQ(tab.value(u"WatermarkTextWidth") + tab.value(u"WatermarkTextHeight"), "RL");
  EXPECT_EQ(tab.value(u"WatermarkTextOutline"), "True");
  const std::string bytes = bytesOf(tab.folder.path / "user" / "ZVeffect.xml");
  EXPECT_NE(bytes.find("<angle>-30</angle>"), bytes.npos);
}

// A translation that cannot be parsed, found when the editor looks up reserved names.
class EditorWithABrokenTranslation : public testing::Test {
 protected:
  EditorWithABrokenTranslation() {
    Testing::copyResources(resources.path / "kiln");
    auto options = Testing::builtOptions();
    options.resources = resources.path / "kiln";
    tab.emplace(options);
    Testing::writeFile(resources.path / "kiln/base/content/fr-FR/strings.dtd", "<!ENTITY broken");
  }

  Testing::TemporaryFolder resources;
  std::optional<Tab> tab;
};

TEST_F(EditorWithABrokenTranslation, TakesTextsAndKnowsTheReservedNamesOfTheOthers) {
  tab->open(u"btn_WMEdit", [&](Hand& hand) {
    EXPECT_TRUE(hand.type("txt_EffWMTxtBox", "Ohne"));
    EXPECT_FALSE(hand.canAccept());
    EXPECT_TRUE(hand.type("txt_EffWMTxtBox", "なし"));
    EXPECT_FALSE(hand.canAccept());
    EXPECT_TRUE(hand.type("txt_EffWMTxtBox", "Other"));
    EXPECT_THAT(tab->world->face.failures, testing::IsEmpty());
    EXPECT_TRUE(hand.accept());
  });
  EXPECT_EQ(tab->value(u"WatermarkText"), "Other");
}

TEST(EditorInTheTab, KnowsTheNamesOfNoneInTheLanguagesOfTheBase) {
  const Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "kiln");
  std::filesystem::create_directory(resources.path / "kiln/base/content/nl-NL");
  Testing::writeFile(resources.path / "kiln/base/content/nl-NL/strings.dtd", "<!ENTITY IDS_NONE \"Geen\">");
  auto options = Testing::builtOptions();
  options.resources = resources.path / "kiln";
  Tab tab(options);
  tab.open(u"btn_WMEdit", [](Hand& hand) {
    EXPECT_TRUE(hand.type("txt_EffWMTxtBox", "Geen"));
    EXPECT_FALSE(hand.canAccept());
    hand.cancel();
  });
}

TEST(EditorInTheTab, KnowsTheNamesOfNoneForAsLongAsThePluginIsLoaded) {
  Tab first;
  first.open(u"btn_WMEdit", [](Hand& hand) {
    hand.type("txt_EffWMTxtBox", "Other");
    hand.cancel();
  });
  const Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "kiln");
  std::filesystem::remove_all(resources.path / "kiln/base/content/de-DE");
  auto options = Testing::builtOptions();
  options.resources = resources.path / "kiln";
  Tab second(options);
  second.open(u"btn_WMEdit", [](Hand& hand) {
    EXPECT_TRUE(hand.type("txt_EffWMTxtBox", "Ohne"));
    EXPECT_FALSE(hand.canAccept());
    hand.cancel();
  });
}

TEST(EditorInTheTab, ReplacesWhatTheUserAgreedToAndKeepsTheSelection) {
  Tab tab;
  auto& list = tab.world->widget<Refhost::ListBox>(u"lst_selectedWatermark");
  tab.world->preferences.set(u"WatermarkSel", u"4");
  tab.world->face.onModal = [](Refhost::Dialog& dialog) {
    if (dialog.layout().find(u"txt_EffWMTxtBox") != nullptr) Hand(dialog, {}).type("txt_EffWMTxtBox", "Copy");
    dialog.accept();
  };
  tab.world->widget<Refhost::Button>(u"btn_WMEdit").click();
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < list.items().count(); ++i)
    names.push_back(Formats::toUtf8(list.items().at(i)->text().view()));
  EXPECT_THAT(names, ElementsAre("None", "Confidential", "Copy", "Draft", "For internal use"));
  EXPECT_EQ(list.selectedItem()->value().view(), u"4");
  EXPECT_EQ(tab.value(u"WatermarkText"), "Copy");
}

TEST(EditorInTheTab, SelectionStaysWhenTheReplacementCannotBeSaved) {
  Tab tab;
  auto& list = tab.world->widget<Refhost::ListBox>(u"lst_selectedWatermark");
  tab.world->preferences.set(u"WatermarkSel", u"4");
  std::filesystem::remove_all(tab.folder.path / "user");
  tab.world->face.onModal = [](Refhost::Dialog& dialog) {
    if (dialog.layout().find(u"txt_EffWMTxtBox") != nullptr) Hand(dialog, {}).type("txt_EffWMTxtBox", "Copy");
    dialog.accept();
  };
  tab.world->widget<Refhost::Button>(u"btn_WMEdit").click();
  EXPECT_THAT(tab.world->face.failures, SizeIs(1));
  EXPECT_EQ(list.selectedItem()->value().view(), u"4");
}

}  // namespace
