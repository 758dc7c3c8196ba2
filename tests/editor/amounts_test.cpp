// Angle, print style and transparency: linked boxes and scroll bars, and rejected edits.
#include "editor_world.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

constexpr const char* angleBox = "txt_EffWMAngle";
constexpr const char* angleBar = "scr_EffWMAngScroll";
constexpr const char* opacityBox = "txt_EffWMOpa";
constexpr const char* opacityBar = "scr_EffWMOpaScroll";

// An editor with a transparent watermark at 10 degrees.
class Amounts : public Editor {
 protected:
  void edit(const std::function<void(Hand&)>& deeds) {
    const auto record = world.newRecord(
        {{"label", "x"}, {"stylename", "x"}, {"angle", "10"}, {"printStyle", "Transparency"}, {"intensity", "30"}});
    EXPECT_FALSE(world.edit(record, [&](Hand& hand) {
      world.takePreview();
      deeds(hand);
    }));
    EXPECT_THAT(world.face.failures, IsEmpty());
  }
};

TEST_F(Amounts, AngleIsTakenFromTheBox) {
  struct Case {
    const char* text;
    const char* angle;
    int position;
    const char* rotation;
  };
  constexpr Case cases[] = {{"45", "45", 135, "45"}, {"-90", "-90", 0, "270"}, {"90", "90", 180, "90"},
                            {"-1", "-1", 89, "359"}, {"0", "0", 90, "0"},      {"", "0", 90, "0"},
                            {"-", "0", 90, "0"},     {"-0", "0", 90, "0"},     {"007", "7", 97, "7"}};
  edit([&](Hand& hand) {
    for (const Case& test : cases) {
      EXPECT_TRUE(hand.type(angleBox, test.text)) << test.text;
      EXPECT_EQ(hand.text(angleBox), test.text);
      EXPECT_EQ(hand.field("angle"), test.angle) << test.text;
      EXPECT_EQ(hand.position(angleBar), test.position) << test.text;
      EXPECT_THAT(world.takePreview(), ElementsAre(std::string("rotation ") + test.rotation)) << test.text;
    }
  });
}

TEST_F(Amounts, RefusedAngleLeavesBoxBarRecordAndPreview) {
  edit([&](Hand& hand) {
    for (const char* text : {"-91", "91", "1-", "+5", "--", "-5-", "x", "A", "1F", " 5", "5 ", "1.5", "999", "４５"}) {
      for (const auto how : {Refhost::Edit::typed, Refhost::Edit::pasted, Refhost::Edit::composing})
        EXPECT_FALSE(hand.type(angleBox, text, how)) << text;
      EXPECT_EQ(hand.text(angleBox), "10") << text;
      EXPECT_EQ(hand.position(angleBar), 100) << text;
      EXPECT_EQ(hand.field("angle"), "10") << text;
      EXPECT_THAT(world.takePreview(), IsEmpty()) << text;
    }
    EXPECT_TRUE(hand.type(angleBox, "11")) << "the next edit is taken";
    EXPECT_EQ(hand.field("angle"), "11");
  });
}

TEST_F(Amounts, AngleIsTakenFromTheBarOnce) {
  edit([&](Hand& hand) {
    const std::pair<int, const char*> places[] = {{0, "-90"}, {180, "90"}, {90, "0"}, {89, "-1"}};
    for (const auto& [position, angle] : places) {
      hand.scroll(angleBar, position);
      EXPECT_EQ(hand.text(angleBox), angle);
      EXPECT_EQ(hand.field("angle"), angle);
      EXPECT_EQ(hand.position(angleBar), position);
      EXPECT_EQ(world.takePreview().size(), 1U);
    }
  });
}

TEST_F(Amounts, LeavingTheAnglesBoxAppliesItsTextOnce) {
  edit([&](Hand& hand) {
    for (const char* text : {"-", "", "20"}) {
      hand.type(angleBox, text);
      world.takePreview();
      hand.leave(angleBox);
      EXPECT_EQ(hand.text(angleBox), text);
      EXPECT_EQ(world.takePreview().size(), 1U);
    }
    EXPECT_EQ(hand.field("angle"), "20");
  });
}

TEST_F(Amounts, TransparencyIsTakenFromTheBox) {
  struct Case {
    const char* text;
    const char* intensity;
    int position;
    const char* opacity;
  };
  constexpr Case cases[] = {{"100", "100", 100, "0"},
                            {"0", "0", 0, "1"},
                            {"", "0", 0, "1"},
                            {"75", "75", 75, "0.25"},
                            {"007", "7", 7, "0.93"}};
  edit([&](Hand& hand) {
    for (const Case& test : cases) {
      EXPECT_TRUE(hand.type(opacityBox, test.text)) << test.text;
      EXPECT_EQ(hand.text(opacityBox), test.text);
      EXPECT_EQ(hand.field("intensity"), test.intensity) << test.text;
      EXPECT_EQ(hand.position(opacityBar), test.position) << test.text;
      EXPECT_THAT(world.takePreview(), ElementsAre(std::string("opacity ") + test.opacity)) << test.text;
    }
  });
}

TEST_F(Amounts, RefusedTransparencyLeavesBoxBarRecordAndPreview) {
  edit([&](Hand& hand) {
    for (const char* text : {"101", "-1", "1-", "+5", "x", "A", "1F", " 5", "1.5", "999", "５"}) {
      EXPECT_FALSE(hand.type(opacityBox, text)) << text;
      EXPECT_EQ(hand.text(opacityBox), "30") << text;
      EXPECT_EQ(hand.position(opacityBar), 30) << text;
      EXPECT_EQ(hand.field("intensity"), "30") << text;
      EXPECT_THAT(world.takePreview(), IsEmpty()) << text;
    }
    EXPECT_TRUE(hand.type(opacityBox, "31")) << "the next edit is taken";
    EXPECT_EQ(hand.field("intensity"), "31");
  });
}

TEST_F(Amounts, TransparencyIsTakenFromTheBarOnce) {
  edit([&](Hand& hand) {
    for (const int position : {100, 0, 42}) {
      hand.scroll(opacityBar, position);
      EXPECT_EQ(hand.text(opacityBox), std::to_string(position));
      EXPECT_EQ(hand.field("intensity"), std::to_string(position));
      EXPECT_EQ(world.takePreview().size(), 1U);
    }
  });
}

TEST_F(Amounts, LeavingTheTransparencysBoxAppliesItsTextOnce) {
  edit([&](Hand& hand) {
    hand.type(opacityBox, "");
    world.takePreview();
    hand.leave(opacityBox);
    EXPECT_EQ(hand.text(opacityBox), "");
    EXPECT_THAT(world.takePreview(), ElementsAre("opacity 1"));
    EXPECT_EQ(hand.field("intensity"), "0");
  });
}

TEST_F(Amounts, OnlyATransparentWatermarkHasATransparency) {
  edit([&](Hand& hand) {
    const std::pair<const char*, const char*> styles[] = {{"rad_EffWMSol", "Solid"}, {"rad_EffWMDrawAsOut", "Outline"}};
    for (const auto& [radio, style] : styles) {
      hand.choose("rad_EffWMTrans");
      hand.type(opacityBox, "60");
      world.takePreview();
      hand.choose(radio);
      EXPECT_EQ(hand.field("printStyle"), style);
      EXPECT_EQ(hand.field("intensity"), "0");
      EXPECT_THAT(world.takePreview(), ElementsAre("opacity 100"));
      for (const char* id : {opacityBox, opacityBar, "lblTrans0", "lblTrans50", "lblTrans100", "lblTransUnit"})
        EXPECT_FALSE(hand.node(id).isEnabled()) << id;
    }
  });
}

TEST_F(Amounts, ChoosingTransparencyTakesThePlaceOfTheBar) {
  edit([&](Hand& hand) {
    hand.choose("rad_EffWMSol");
    world.takePreview();
    hand.choose("rad_EffWMTrans");
    EXPECT_EQ(hand.field("printStyle"), "Transparency");
    EXPECT_EQ(hand.field("intensity"), "30") << "the bar stays where it was";
    EXPECT_EQ(hand.text(opacityBox), "30");
    EXPECT_THAT(Testing::widgetOperations(world.events), testing::Contains("scr_EffWMOpaScroll setPosition 30"));
    EXPECT_THAT(world.takePreview(), ElementsAre("opacity 0.7"));
    for (const char* id : {opacityBox, opacityBar, "lblTrans0", "lblTrans50", "lblTrans100", "lblTransUnit"})
      EXPECT_TRUE(hand.node(id).isEnabled()) << id;
  });
}

TEST_F(Amounts, ChoosingTransparencyPutsThePlaceOfTheBarIntoTheBox) {
  edit([&](Hand& hand) {
    hand.type(opacityBox, "");
    hand.choose("rad_EffWMSol");
    EXPECT_EQ(hand.text(opacityBox), "");
    hand.choose("rad_EffWMTrans");
    EXPECT_EQ(hand.text(opacityBox), "0");
  });
}

TEST_F(Editor, TakesANumberFromTheBarAfterTheHostFailedToMoveIt) {
  world.edit([this](Hand& hand) {
    {
      const EditorWorld::FailingChange failing(world, angleBar, "setPosition");
      hand.type(angleBox, "45");
      EXPECT_EQ(world.face.failures.size(), 1U);
    }
    hand.scroll(angleBar, 0);
    EXPECT_EQ(hand.field("angle"), "-90");
    EXPECT_EQ(hand.text(angleBox), "-90");
  });
}

TEST_F(Amounts, TransparencyOfTheBarIsRecordedWhenTheHostFailsToShowItInTheBox) {
  edit([this](Hand& hand) {
    const EditorWorld::FailingChange failing(world, opacityBox, "setText");
    hand.scroll(opacityBar, 60);
    EXPECT_EQ(std::exchange(world.face.failures, {}).size(), 1U);
    EXPECT_EQ(hand.field("intensity"), "60");
    EXPECT_EQ(hand.text(opacityBox), "30");
  });
}

TEST_F(Editor, OffersHalfATransparencyToASolidWatermark) {
  world.edit([](Hand& hand) {
    EXPECT_EQ(hand.position(opacityBar), 50);
    EXPECT_EQ(hand.text(opacityBox), "50");
    hand.choose("rad_EffWMTrans");
    EXPECT_EQ(hand.field("intensity"), "50");
    EXPECT_EQ(hand.text(opacityBox), "50");
  });
}

TEST(EditorWithoutABarOfTheTransparency, KeepsTheRecordsOwn) {
  EditorOptions options;
  options.without = {u"scr_EffWMOpaScroll"};
  EditorWorld world(options);
  const auto record =
      world.newRecord({{"label", "x"}, {"stylename", "x"}, {"printStyle", "Transparency"}, {"intensity", "30"}});
  world.edit(record, [](Hand& hand) {
    EXPECT_EQ(hand.field("intensity"), "30");
    EXPECT_EQ(hand.text(opacityBox), "30");
  });
}

TEST(EditorWithoutBoxesOfTheAmounts, TakesThoseOfTheRecordAndOfTheBars) {
  EditorOptions options;
  options.without = {u"txt_EffWMAngle", u"txt_EffWMOpa"};
  EditorWorld world(options);
  const auto amounts = [](const char* angle, const char* intensity) {
    return Fields{
        {"label", "x"}, {"stylename", "x"}, {"angle", angle}, {"printStyle", "Transparency"}, {"intensity", intensity}};
  };
  const auto record = world.newRecord(amounts("-45", "30"));
  const auto defaults = record->childOrNew(Effect::Field::defaultSetting);
  for (const auto& [name, text] : amounts("45", "60")) setFieldOf(defaults, name, text);
  world.edit(record, [&world](Hand& hand) {
    const auto expect = [&](const std::string& angle, const std::string& rotation, const std::string& intensity,
                            const std::string& opacity) {
      EXPECT_EQ(hand.field("angle"), angle);
      EXPECT_EQ(hand.position(angleBar), std::stoi(angle) + 90);
      EXPECT_EQ(hand.field("intensity"), intensity);
      EXPECT_EQ(hand.position(opacityBar), std::stoi(intensity));
      EXPECT_THAT(world.takePreview(), IsSupersetOf({"rotation " + rotation, "opacity " + opacity}));
    };
    expect("-45", "315", "30", "0.7");
    for (const int amount : {70, 20}) {
      hand.scroll(angleBar, amount);
      hand.scroll(opacityBar, amount);
      expect(std::to_string(amount - 90), std::to_string(amount + 270), std::to_string(amount),
             amount == 70 ? "0.3" : "0.8");
    }
    hand.click("but_EffWMResDef");
    expect("45", "45", "60", "0.4");
  });
}

}  // namespace
