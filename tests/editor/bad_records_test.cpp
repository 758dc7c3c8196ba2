// Invalid records: the dialog opens and shows a valid value. What the user does not change stays as the record has it.
#include "editor_world.h"
#include "effect/watermark/editor_ranges.h"
#include "effect/watermark/numbers.h"

namespace {

using testing::IsEmpty;

// Checks that all fields have values that the editor can produce.
void expectValid(const Effect::Node& record) {
  const auto wide = [&](const char* name) { return Formats::toUtf16(fieldOf(record, name)); };
  for (const char* name : {"label", "stylename"}) {
    EXPECT_FALSE(wide(name).empty()) << name;
    EXPECT_LE(wide(name).size(), 63U) << name;
  }
  EXPECT_FALSE(wide("fontname").empty());
  const std::u16string size = wide("fontsize");
  EXPECT_TRUE(Effect::isFontSize(size));
  EXPECT_EQ(size, Effect::decimalText(Effect::leadingInteger(size)));
  EXPECT_THAT(fieldOf(record, "fontstyle"), testing::AnyOf("Regular", "Bold", "Italic", "BoldItalic"));
  EXPECT_TRUE(Effect::isColour(wide("colour")));
  EXPECT_TRUE(Effect::angleOf(wide("angle")));
  EXPECT_FALSE(wide("angle").empty());
  EXPECT_TRUE(Effect::isPosition(wide("positionY") + wide("positionX")));
  EXPECT_THAT(fieldOf(record, "printStyle"), testing::AnyOf("Solid", "Outline", "Transparency"));
  EXPECT_TRUE(Effect::percentOf(wide("intensity")));
  EXPECT_FALSE(wide("intensity").empty());
}

struct BadField {
  std::string field;
  std::string bad;
  std::string written;  // after OK without a change
};

class BadRecord : public Editor, public testing::WithParamInterface<BadField> {
 protected:
  Effect::Node record() {
    const auto made = world.newRecord({{"label", "Text"},
                                       {"stylename", "Name"},
                                       {"fontname", "Arial"},
                                       {"fontsize", "96"},
                                       {"fontstyle", "Bold"},
                                       {"colour", "#FF0000"},
                                       {"angle", "45"},
                                       {"positionX", "R"},
                                       {"positionY", "U"},
                                       {"printStyle", "Transparency"},
                                       {"intensity", "30"}});
    setFieldOf(made, GetParam().field, GetParam().bad);
    return made;
  }
};

TEST_P(BadRecord, StaysAsItIsWhereTheUserChangesNothing) {
  const auto edited = record();
  EXPECT_TRUE(world.edit(edited, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_THAT(world.face.failures, IsEmpty());
  EXPECT_EQ(fieldOf(edited, GetParam().field), GetParam().written);
}

TEST_P(BadRecord, IsAValidOneOnceEverythingIsChanged) {
  const auto edited = record();
  EXPECT_TRUE(world.edit(edited, [](Hand& hand) {
    hand.type("txt_EffWMTxtBox", "Other");
    hand.type("txt_EffWMStyleName", "Other name");
    hand.select("cmb_EffWMFonNam", 0);
    hand.type("txt_EffWMFonSiz", "12");
    hand.select("cmb_EffWMSty", 2);
    hand.pick(0x123456);
    hand.type("txt_EffWMAngle", "12");
    hand.click("LR");
    hand.choose("rad_EffWMTrans");
    hand.type("txt_EffWMOpa", "12");
    EXPECT_TRUE(hand.accept());
  }));
  expectValid(edited);
}

const std::string endless(100'000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Each, BadRecord,
    testing::Values(
        BadField{"angle", "abc", "abc"}, BadField{"angle", "91", "91"}, BadField{"angle", "315", "315"},
        BadField{"angle", "1-", "1-"}, BadField{"angle", "+5", "+5"}, BadField{"angle", "", "0"},
        BadField{"angle", std::string(100'000, '9'), std::string(100'000, '9')}, BadField{"fontsize", "1e9", "6"},
        BadField{"fontsize", "", "6"}, BadField{"fontsize", "0", "6"}, BadField{"fontsize", "12pt", "12pt"},
        BadField{"fontsize", "72.5", "72.5"}, BadField{"fontsize", "12/5", "12/5"},
        BadField{"fontsize", std::string(100'000, '9'), "6"}, BadField{"colour", "#12", "#12"},
        BadField{"colour", "", "#808080"}, BadField{"colour", "red", "red"}, BadField{"colour", "#00GG00", "#00GG00"},
        BadField{"colour", "#G00000", "#G00000"}, BadField{"colour", "#00FF0000", "#00FF0000"},
        BadField{"colour", "custom", "custom"}, BadField{"colour", endless, endless}, BadField{"positionX", "ZZ", "ZZ"},
        BadField{"positionX", "U", "U"}, BadField{"positionX", "RR", "RR"}, BadField{"positionY", "R", "R"},
        BadField{"positionY", "", "C"}, BadField{"positionY", endless, endless}, BadField{"fontstyle", "Wavy", "Wavy"},
        BadField{"fontstyle", "Oblique", "Oblique"}, BadField{"fontstyle", "", "Regular"},
        BadField{"fontname", "", "Arial"}, BadField{"fontname", "Nowhere Sans", "Nowhere Sans"},
        BadField{"printStyle", "Sparkling", "Sparkling"}, BadField{"printStyle", "", "Solid"},
        BadField{"intensity", "101", "101"}, BadField{"intensity", "150", "150"}, BadField{"intensity", "-1", "-1"},
        BadField{"intensity", "abc", "abc"}, BadField{"intensity", "", "0"}, BadField{"label", endless, endless},
        BadField{"label", std::string(70, 'x'), std::string(70, 'x')}, BadField{"label", "$" + endless, "$" + endless},
        BadField{"stylename", endless, endless},
        BadField{"label", std::string(62, 'x') + "\U0001F600", std::string(62, 'x') + "\U0001F600"}),
    [](const auto& test) { return std::to_string(test.index) + "_" + test.param.field; });

TEST_F(Editor, OnlyPassingThroughTheBoxesOfAmountsChangesNothing) {
  const auto record = world.newRecord({{"label", "Text"},
                                       {"stylename", "Name"},
                                       {"angle", "120"},
                                       {"printStyle", "Transparency"},
                                       {"intensity", "150"}});
  EXPECT_TRUE(world.edit(record, [](Hand& hand) {
    for (const char* box : {"txt_EffWMAngle", "txt_EffWMOpa"}) hand.leave(box);
    EXPECT_TRUE(hand.accept());
  }));
  EXPECT_EQ(fieldOf(record, "angle"), "120");
  EXPECT_EQ(fieldOf(record, "intensity"), "150");
}

TEST_F(Editor, AValueThatIsChosenThoughItIsShownAlreadyIsWritten) {
  const auto record =
      world.newRecord({{"label", "Text"}, {"stylename", "Name"}, {"fontstyle", "Oblique"}, {"angle", "120"}});
  EXPECT_TRUE(world.edit(record, [](Hand& hand) {
    hand.select("cmb_EffWMSty", 1);
    hand.select("cmb_EffWMSty", 0);
    for (const char* text : {"", "0"}) hand.type("txt_EffWMAngle", text);
    EXPECT_TRUE(hand.accept());
  }));
  EXPECT_EQ(fieldOf(record, "fontstyle"), "Regular");
  EXPECT_EQ(fieldOf(record, "angle"), "0");
}

TEST_F(Editor, ColourOfAPrinterOfBlackMarksIsBlackWhateverTheRecordHas) {
  world.allowColours(true, false);
  for (const char* colour : {"#FF0000", "#12"}) {
    const auto record = world.newRecord({{"label", "Text"}, {"stylename", "Name"}, {"colour", colour}});
    EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
    EXPECT_EQ(fieldOf(record, "colour"), "#000000") << colour;
  }
}

TEST_F(Editor, ShowsNoFaceForOneThatIsNotInstalledAndPreviewsIt) {
  world.edit(world.newRecord({{"label", "x"}, {"stylename", "x"}, {"fontname", "Nowhere Sans"}}), [](Hand& hand) {
    EXPECT_EQ(hand.selected("cmb_EffWMFonNam"), "");
    EXPECT_EQ(hand.preview().face, u"Nowhere Sans");
  });
}

TEST_F(Editor, ShowsARecordWithoutFieldsAsTheNoneRecord) {
  const auto record = world.host.documents()->createElement(u"WM_1", {}, {});
  Effect::setField(*record, Effect::Field::stylename, u"Name");
  EXPECT_TRUE(world.edit(record, [](Hand& hand) {
    EXPECT_FALSE(hand.canAccept()) << "there is no text";
    hand.type("txt_EffWMTxtBox", "Text");
    EXPECT_TRUE(hand.accept());
  }));
  expectValid(record);
  EXPECT_EQ(fieldOf(record, "fontsize"), "72");
}

TEST_F(Editor, ShowsNothingOfARecordThatIsNotThere) {
  EXPECT_FALSE(world.edit(Effect::Node(), [](Hand& hand) {
    EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "");
    EXPECT_EQ(hand.text("txt_EffWMFonSiz"), "");
    hand.cancel();
  }));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(Editor, ShowsARecordOfNothingButNonsense) {
  Fields nonsense;
  for (const char* name : {"label", "stylename", "fontname", "fontsize", "fontstyle", "colour", "angle", "positionX",
                           "positionY", "printStyle", "intensity"})
    nonsense.emplace_back(name, endless);
  const auto record = world.newRecord(nonsense);
  EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(Editor, RestoresNoTransparencyOfDefaultsThatNameNone) {
  for (const char* intensity : {"101", "-1", "", "x"}) {
    const auto record =
        world.newRecord({{"label", "x"}, {"stylename", "x"}, {"printStyle", "Transparency"}, {"intensity", "30"}});
    const auto defaults = record->childOrNew(Effect::Field::defaultSetting);
    setFieldOf(defaults, "printStyle", "Transparency");
    setFieldOf(defaults, "intensity", intensity);
    world.edit(record, [intensity](Hand& hand) {
      hand.click("but_EffWMResDef");
      EXPECT_EQ(hand.field("intensity"), "0") << intensity;
      EXPECT_EQ(hand.position("scr_EffWMOpaScroll"), 0) << intensity;
    });
  }
}

TEST(CutToBox, SplitsNoCharacter) {
  const std::u16string smileys = u"\U0001F600\U0001F600";
  const std::u16string text = std::u16string(62, u'x') + smileys;
  EXPECT_EQ(Effect::cutToBox(text), std::u16string(62, u'x'));
  EXPECT_EQ(Effect::cutToBox(text.substr(1)), std::u16string(61, u'x') + smileys.substr(0, 2));
  EXPECT_EQ(Effect::cutToBox(std::u16string(62, u'x') + u"\U0001F601"), std::u16string(62, u'x'));
  for (const char16_t half : std::initializer_list<char16_t>{0xD83D, 0xDE00})
    EXPECT_EQ(Effect::cutToBox(std::u16string(64, half)).size(), 63U) << "halves of characters are kept";
}

}  // namespace
