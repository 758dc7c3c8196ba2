// Invalid records: the dialog opens, shows a valid value, and writes valid fields.
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
  std::string written;
};

class BadRecord : public Editor, public testing::WithParamInterface<BadField> {};

TEST_P(BadRecord, IsShownAndWrittenAsAValidOne) {
  const auto& [field, bad, written] = GetParam();
  const auto record = world.newRecord({{"label", "Text"},
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
  setFieldOf(record, field, bad);
  EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_THAT(world.face.failures, IsEmpty());
  EXPECT_EQ(fieldOf(record, field), written);
  expectValid(record);
}

const std::string endless(100'000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Each, BadRecord,
    testing::Values(BadField{"angle", "abc", "0"}, BadField{"angle", "91", "0"}, BadField{"angle", "315", "0"},
                    BadField{"angle", "1-", "0"}, BadField{"angle", "+5", "0"}, BadField{"angle", "", "0"},
                    BadField{"angle", std::string(100'000, '9'), "0"}, BadField{"fontsize", "1e9", "6"},
                    BadField{"fontsize", "", "6"}, BadField{"fontsize", "0", "6"}, BadField{"fontsize", "12pt", "12"},
                    BadField{"fontsize", "12:5", "12"}, BadField{"fontsize", "12/5", "12"},
                    BadField{"fontsize", std::string(100'000, '9'), "6"}, BadField{"colour", "#12", "#808080"},
                    BadField{"colour", "", "#808080"}, BadField{"colour", "red", "#808080"},
                    BadField{"colour", "#00GG00", "#808080"}, BadField{"colour", "#G00000", "#808080"},
                    BadField{"colour", "#00FF0000", "#808080"}, BadField{"colour", "custom", "#808080"},
                    BadField{"colour", endless, "#808080"}, BadField{"positionX", "ZZ", "C"},
                    BadField{"positionX", "U", "C"}, BadField{"positionX", "RR", "C"}, BadField{"positionY", "R", "C"},
                    BadField{"positionY", "", "C"}, BadField{"positionY", endless, "C"},
                    BadField{"fontstyle", "Wavy", "Regular"}, BadField{"fontstyle", "", "Regular"},
                    BadField{"fontname", "", "Arial"}, BadField{"fontname", "Nowhere Sans", "Nowhere Sans"},
                    BadField{"printStyle", "Sparkling", "Solid"}, BadField{"printStyle", "", "Solid"},
                    BadField{"intensity", "101", "0"}, BadField{"intensity", "-1", "0"},
                    BadField{"intensity", "abc", "0"}, BadField{"intensity", "", "0"},
                    BadField{"label", endless, std::string(63, 'x')},
                    BadField{"label", "$" + endless, "$" + std::string(62, 'x')},
                    BadField{"stylename", endless, std::string(63, 'x')},
                    BadField{"label", std::string(62, 'x') + "\U0001F600", std::string(62, 'x')}),
    [](const auto& test) { return std::to_string(test.index) + "_" + test.param.field; });

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
  expectValid(record);
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
