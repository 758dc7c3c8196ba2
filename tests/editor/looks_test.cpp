// Colour, face, style, size and position.
#include "editor_world.h"

#include "effect/watermark/numbers.h"
#include "host/reference_host.h"

namespace {

// A GUI and its dialogs as the host has them; remembers the ids of widgets that are looked for.
class WatchedDialog final : public Kiln::XUL::SubDialog {
 public:
  WatchedDialog(Kiln::SmartPtr<Kiln::XUL::SubDialog> hosts, std::vector<std::string>& ids)
      : dialog(std::move(hosts)),
        wanted(ids) {}

  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override {
    wanted.push_back(Formats::toUtf8(id));
    return dialog->widgetById(id);
  }
  Kiln::SmartPtr<Kiln::XUL::Widget> parentWidgetById(Kiln::WStringView id) override {
    return dialog->parentWidgetById(id);
  }
  Kiln::SmartPtr<Kiln::XUL::Button> okButton() override { return dialog->okButton(); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> okSignal() override { return dialog->okSignal(); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> cancelSignal() override { return dialog->cancelSignal(); }
  Kiln::SmartPtr<SubDialog> openDialog(Kiln::WStringView url) override { return dialog->openDialog(url); }
  void runModally() override { dialog->runModally(); }
  void show() override { dialog->show(); }
  void registerImage(Kiln::WStringView name, Kiln::WStringView url) override { dialog->registerImage(name, url); }

 private:
  Kiln::SmartPtr<Kiln::XUL::SubDialog> dialog;
  std::vector<std::string>& wanted;
};

class WatchedGui final : public Kiln::XUL::GUI {
 public:
  explicit WatchedGui(Kiln::SmartPtr<Kiln::XUL::GUI> hosts) : gui(std::move(hosts)) {}

  void load(Kiln::WStringView url) override { gui->load(url); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<GUI>>> readySignal() override { return gui->readySignal(); }
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override { return gui->widgetById(id); }
  Kiln::SmartPtr<Kiln::XUL::TabPanel> tabPanel() override { return gui->tabPanel(); }
  Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override {
    return Refhost::make<WatchedDialog>(gui->openDialog(url), wanted);
  }

  std::vector<std::string> wanted;

 private:
  Kiln::SmartPtr<Kiln::XUL::GUI> gui;
};

TEST_F(Editor, LooksForTheBlackMarkThatOtherLayoutsHave) {
  const auto gui = Refhost::make<WatchedGui>(world.tab());
  Kiln::XUL::WatermarkDlg editor({world.host, world.manager, gui}, world.newRecord(), false);
  const auto caption = std::find(gui->wanted.begin(), gui->wanted.end(), "txt_WMCol");
  ASSERT_NE(caption, gui->wanted.end());
  EXPECT_EQ(*(caption + 1), "wtmcol_k");
}

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* colours = "cmb_EffWMCol";

TEST_F(Editor, HasTheCustomColourAtPlaceTen) {
  world.edit([](Hand& hand) {
    auto& items = hand.widget<Refhost::ComboBox>(colours).items();
    ASSERT_EQ(items.count(), 11);
    for (std::int32_t i = 0; i < 10; ++i) {
      const auto image = Kiln::smartCast<Refhost::Image>(items.at(i)->image());
      ASSERT_TRUE(image) << i;
      EXPECT_EQ(image->colour, items.at(i)->value().view());
      EXPECT_EQ(image->width, 15);
      EXPECT_EQ(image->height, 15);
    }
    EXPECT_EQ(items.at(10)->value().view(), u"custom");
    EXPECT_FALSE(items.at(10)->image());
    EXPECT_TRUE(items.at(10)->flag());
  });
}

TEST(EditorWithoutAListOfWatermarks, HasSwatchesOfTheUsualSize) {
  EditorOptions options;
  options.without = {u"lst_selectedWatermark"};
  EditorWorld world(options);
  world.edit([](Hand& hand) {
    const auto image = Kiln::smartCast<Refhost::Image>(hand.widget<Refhost::ComboBox>(colours).items().at(0)->image());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 15);
  });
}

TEST_F(Editor, TakesANamedColour) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.select(colours, 4);
    EXPECT_EQ(hand.field("colour"), "#FF0000");
    EXPECT_THAT(world.takePreview(), ElementsAre("colour #FF0000"));
    EXPECT_TRUE(hand.customColour().flag());
  });
}

TEST_F(Editor, PutsThePickedColourIntoTheCustomEntry) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.pick(0xFF0080);
    EXPECT_EQ(hand.field("colour"), "#FF0080");
    EXPECT_THAT(world.takePreview(), ElementsAre("colour #FF0080"));
    EXPECT_EQ(hand.selected(colours), "#FF0080");
    EXPECT_EQ(hand.widget<Refhost::ComboBox>(colours).selection(), 10);
    EXPECT_FALSE(hand.customColour().flag());
    const auto image = Kiln::smartCast<Refhost::Image>(hand.customColour().image());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->colour, u"#FF0080");
    EXPECT_EQ(image->width, 15);

    hand.select(colours, 0);
    EXPECT_EQ(hand.field("colour"), "#000000");
    EXPECT_FALSE(hand.customColour().flag()) << "it keeps the colour that was picked";
    hand.select(colours, 10);
    EXPECT_EQ(hand.field("colour"), "#FF0080");
  });
}

// A list item that keeps the states that it is given.
class FollowedItem final : public Kiln::XUL::ListItem {
 public:
  FollowedItem(Kiln::SmartPtr<Kiln::XUL::ListItem> trueItem, std::vector<bool>& given)
      : item(std::move(trueItem)),
        states(given) {}

  Kiln::WString text() override { return item->text(); }
  void setText(Kiln::WStringView text) override { item->setText(text); }
  Kiln::WString displayedText() override { return item->displayedText(); }
  Kiln::WString value() override { return item->value(); }
  void setValue(Kiln::WStringView value) override { item->setValue(value); }
  void setColour(Kiln::WStringView colour) override { item->setColour(colour); }
  Kiln::SmartPtr<Kiln::XUL::Image> image() override { return item->image(); }
  void setImage(Kiln::SmartPtr<Kiln::XUL::Image> image) override { item->setImage(image); }
  bool isMarked() override { return item->isMarked(); }
  void setMarked(bool mark) override { item->setMarked(mark); }
  bool flag() override { return item->flag(); }
  void setFlag(bool flag) override {
    states.push_back(flag);
    item->setFlag(flag);
  }

 private:
  Kiln::SmartPtr<Kiln::XUL::ListItem> item;
  std::vector<bool>& states;
};

// A host may act on a state as it comes.
TEST_F(Editor, TellsTheCustomEntryThatItHasNoColourAndThenThatItHasOne) {
  world.edit([](Hand& hand) {
    std::vector<bool> states;
    auto& items = hand.widget<Refhost::ComboBox>(colours).items();
    items.insert(10, Refhost::make<FollowedItem>(items.remove(10), states));
    hand.select(colours, 0);
    EXPECT_THAT(states, ElementsAre(true));
    hand.pick(0xFF0080);
    EXPECT_THAT(states, ElementsAre(true, true, false));
    hand.select(colours, 4);
    EXPECT_THAT(states, ElementsAre(true, true, false));
  });
}

TEST_F(Editor, PicksEvenANamedColourAsACustomOne) {
  world.edit([](Hand& hand) {
    hand.pick(0x000000);
    EXPECT_EQ(hand.widget<Refhost::ComboBox>(colours).selection(), 10);
    EXPECT_EQ(hand.field("colour"), "#000000");
  });
}

TEST_F(Editor, KeepsItsColourWhileTheCustomEntryHasNone) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.select(colours, 10);
    EXPECT_EQ(hand.selected(colours), "#808080");
    EXPECT_EQ(hand.field("colour"), "#808080");
    EXPECT_THAT(world.takePreview(), IsEmpty());
  });
}

TEST_F(Editor, ShowsAColourWithoutANameAsTheCustomOne) {
  world.edit(world.newRecord({{"label", "x"}, {"stylename", "x"}, {"colour", "#12ab9F"}}), [](Hand& hand) {
    EXPECT_EQ(hand.field("colour"), "#12AB9F");
    EXPECT_EQ(hand.selected(colours), "#12AB9F");
    EXPECT_FALSE(hand.customColour().flag());
  });
}

TEST_F(Editor, TakesAFace) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.select("cmb_EffWMFonNam", 2);
    EXPECT_EQ(hand.field("fontname"), "beta");
    EXPECT_THAT(world.takePreview(), ElementsAre("face beta"));
  });
}

TEST_F(Editor, TakesAStyle) {
  world.edit([this](Hand& hand) {
    struct Case {
      int index;
      const char* style;
      const char* bold;
      const char* italic;
    };
    constexpr Case cases[] = {{1, "Bold", "bold true", "italic false"},
                              {2, "Italic", "bold false", "italic true"},
                              {3, "BoldItalic", "bold true", "italic true"},
                              {0, "Regular", "bold false", "italic false"}};
    for (const Case& test : cases) {
      world.takePreview();
      hand.select("cmb_EffWMSty", test.index);
      EXPECT_EQ(hand.field("fontstyle"), test.style);
      EXPECT_THAT(world.takePreview(), ElementsAre(test.bold, test.italic));
    }
  });
}

TEST_F(Editor, TakesASizeAsItIsTyped) {
  world.edit([this](Hand& hand) {
    struct Case {
      const char* text;
      const char* told;
    };
    constexpr Case cases[] = {{"8", "size 8"},      {"80.5", "size 80.5"}, {"x", "size 0"},
                              {"12 pt", "size 12"}, {"", "size 0"},        {"1e2", "size 100"},
                              {"301", "size 301"},  {"-3", "size -3"},     {"inf", "size 0"}};
    for (const Case& test : cases) {
      world.takePreview();
      EXPECT_TRUE(hand.type("txt_EffWMFonSiz", test.text)) << test.text;
      EXPECT_EQ(hand.field("fontsize"), test.text);
      EXPECT_THAT(world.takePreview(), ElementsAre(test.told));
    }
  });
}

TEST_F(Editor, DoesNotTakeASizeThatIsStillComposed) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    EXPECT_TRUE(hand.type("txt_EffWMFonSiz", "9", Refhost::Edit::composing));
    EXPECT_EQ(hand.field("fontsize"), "72");
    EXPECT_THAT(world.takePreview(), IsEmpty());
  });
}

TEST_F(Editor, ReplacesAnImpossibleSizeBySixWhenItsBoxIsLeft) {
  world.edit([this](Hand& hand) {
    for (const char* text : {"5", "301", "", "x", "-72", "1e2", "99999999999"}) {
      hand.type("txt_EffWMFonSiz", text);
      world.takePreview();
      hand.leave("txt_EffWMFonSiz");
      EXPECT_EQ(hand.text("txt_EffWMFonSiz"), "6") << text;
      EXPECT_EQ(hand.field("fontsize"), "6") << text;
      EXPECT_THAT(world.takePreview(), ElementsAre("size 6")) << text;
    }
    for (const char* text : {"6", "300", "72.5"}) {
      hand.type("txt_EffWMFonSiz", text);
      world.takePreview();
      hand.leave("txt_EffWMFonSiz");
      EXPECT_EQ(hand.text("txt_EffWMFonSiz"), text);
      EXPECT_THAT(world.takePreview(), IsEmpty());
    }
  });
}

TEST_F(Editor, TakesEachOfTheNinePositions) {
  world.edit([this](Hand& hand) {
    for (const std::string code : {"UL", "UC", "UR", "CL", "CC", "CR", "LL", "LC", "LR"}) {
      world.takePreview();
      hand.click(code);
      EXPECT_EQ(hand.field("positionY") + hand.field("positionX"), code);
      EXPECT_THAT(world.takePreview(), ElementsAre("position " + code));
    }
  });
}

TEST(LeadingNumber, ReadsWhatATextBeginsWith) {
  using Effect::leadingNumber;
  EXPECT_EQ(leadingNumber(u" +72.5pt"), 72.5);
  EXPECT_EQ(leadingNumber(u"-.5"), -0.5);
  EXPECT_EQ(leadingNumber(u"1e9"), 1e9);
  EXPECT_EQ(leadingNumber(u"1E+2"), 100);
  EXPECT_EQ(leadingNumber(u"072.5"), 72.5);
  EXPECT_EQ(leadingNumber(u"7,5"), 7);
  for (const char16_t* nothing : {u"", u".", u"e5", u"--1", u"nan", u"inf", u"７"})
    EXPECT_EQ(leadingNumber(nothing), 0);
}

TEST(LeadingNumber, IsNeverInfinite) {
  EXPECT_EQ(Effect::leadingNumber(u"1e999"), std::numeric_limits<double>::max());
  EXPECT_EQ(Effect::leadingNumber(u"-1e999"), std::numeric_limits<double>::lowest());
  EXPECT_EQ(Effect::leadingNumber(u"1e-999"), 0);
  EXPECT_EQ(Effect::leadingNumber(u"1E-999"), 0);
  EXPECT_EQ(Effect::leadingNumber(std::u16string(100'000, u'9')), std::numeric_limits<double>::max());
}

}  // namespace
