// Opening and accepting a record without a change leaves it unchanged.
//
// Only these fields are rewritten: a string-table reference becomes its translation; a colour without an entry becomes
// upper case; angle and transparency get their shortest form; the transparency is 0 unless the print style is
// transparent.
#include "editor_world.h"
#include "tests/support/locales.h"

#include <random>

namespace {

class RandomRecords {
 public:
  explicit RandomRecords(unsigned seed) : random(seed) {}

  Fields next() {
    const std::string style = oneOf({"Solid", "Outline", "Transparency"});
    return {{"label", text()},
            {"stylename", text()},
            {"fontname", oneOf({"Arial", "Zeta", "beta", "Nowhere Sans", "ＭＳ Ｐゴシック"})},
            {"fontsize", number(6, 300)},
            {"fontstyle", oneOf({"Regular", "Bold", "Italic", "BoldItalic"})},
            {"colour", colour()},
            {"angle", number(-90, 90)},
            {"positionX", oneOf({"L", "C", "R"})},
            {"positionY", oneOf({"U", "C", "L"})},
            {"printStyle", style},
            {"intensity", style == "Transparency" ? number(0, 100) : "0"}};
  }

 private:
  int between(int least, int most) { return std::uniform_int_distribution(least, most)(random); }
  std::string number(int least, int most) { return std::to_string(between(least, most)); }
  std::string oneOf(const std::vector<std::string>& all) {
    return all[static_cast<std::size_t>(between(0, static_cast<int>(all.size()) - 1))];
  }

  // Texts that are not references may have any characters, including "$", except at the start.
  std::string text() {
    std::string made = oneOf({"a", "Ü", "下", "\U0001F600", "\"", "&", " "});
    for (int length = between(0, 20); length > 0; --length)
      made += oneOf({"b", "é", "写", "\U0001F600", "$", ";", "<", " ", "\u0301"});
    return made;
  }

  // Half of them have an entry in the list.
  std::string colour() {
    if (between(0, 1) == 0) return oneOf({"#000000", "#808080", "#FF0000", "#0000FF"});
    char hexadecimal[8];
    std::snprintf(hexadecimal, sizeof hexadecimal, "#%06X", static_cast<unsigned>(between(0, 0xFFFFFF)));
    return hexadecimal;
  }

  std::mt19937 random;
};

TEST_F(Editor, LeavesAThousandRecordsAsTheyAre) {
  RandomRecords records(20260714);
  for (int i = 0; i < 1000; ++i) {
    const Fields fields = records.next();
    const auto record = world.newRecord(fields);
    const bool isAccepted = world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); });
    ASSERT_TRUE(isAccepted);
    for (const auto& [name, text] : fields) ASSERT_EQ(fieldOf(record, name), text) << name << " of record " << i;
    ASSERT_EQ(record->childCount(), world.newRecord(fields)->childCount());
  }
  EXPECT_THAT(world.face.failures, testing::IsEmpty());
}

TEST_F(Editor, LeavesOtherFieldsOfARecordAlone) {
  const auto record = world.newRecord({{"label", "x"}, {"stylename", "x"}, {"value", "WM_7"}, {"ours", "kept"}});
  EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_EQ(fieldOf(record, "value"), "WM_7");
  EXPECT_EQ(fieldOf(record, "ours"), "kept");
}

TEST_F(Editor, WritesOtherFormsOfAValueInItsOwn) {
  const auto record = world.newRecord({{"label", "$IDS_WM_DRAFT;"},
                                       {"stylename", "$IDS_WM_COPY;"},
                                       {"colour", "#ff00aa"},
                                       {"angle", "-07"},
                                       {"printStyle", "Solid"},
                                       {"intensity", "30"}});
  EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  const Fields written = {
      {"label", "Draft"}, {"stylename", "Copy"}, {"colour", "#FF00AA"}, {"angle", "-7"}, {"intensity", "0"}};
  for (const auto& [name, text] : written) EXPECT_EQ(fieldOf(record, name), text) << name;
}

class BuiltIn : public testing::TestWithParam<std::string> {};

TEST_P(BuiltIn, RecordsOnlyGetTheirTextsTranslated) {
  EditorOptions options;
  options.locale = GetParam();
  EditorWorld world(options);
  const auto root = world.host.documents()->read(world.host.resource(Effect::Address::builtInWatermarks));
  ASSERT_EQ(root->childCount(), 5);
  for (std::int32_t i = 0; i < 5; ++i) {
    const auto record = root->childAt(i)->clone();
    const auto before = record->clone();
    EXPECT_TRUE(world.edit(record, [](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
    for (const char* name :
         {"fontsize", "fontstyle", "colour", "angle", "positionX", "positionY", "printStyle", "intensity", "value"})
      EXPECT_EQ(fieldOf(record, name), fieldOf(before, name)) << name;
    for (const char* name : {"label", "stylename"}) {
      const auto translation = world.host.translate(Formats::toUtf16(fieldOf(before, name)));
      EXPECT_EQ(fieldOf(record, name), Formats::toUtf8(translation.view()));
    }
    // A record without a face gets the default face for the user's language, in the store and in the editor.
    EXPECT_EQ(fieldOf(record, "fontname"), Formats::toUtf8(Effect::defaultFace(world.host)));
    EXPECT_EQ(fieldOf(record->child(Effect::Field::defaultSetting), "label"),
              fieldOf(before->child(Effect::Field::defaultSetting), "label"));
  }
}

INSTANTIATE_TEST_SUITE_P(In, BuiltIn, testing::ValuesIn(Testing::locales), Testing::testedLocale);

}  // namespace
