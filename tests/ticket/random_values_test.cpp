// Random values of every property: they come back equal, or are refused with a sentence.
#include "formats/text.h"
#include "tests/ticket/ticket_world.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using Testing::TicketWorld;

class Random {
 public:
  explicit Random(unsigned seed) : engine(seed) {}

  std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(engine); }

  // A text of up to `longest` pieces, most of which are awkward.
  std::u16string text(std::size_t longest) {
    std::u16string made;
    for (std::size_t left = below(longest + 1); left > 0; --left) made += piece();
    return made;
  }

 private:
  std::u16string piece() {
    static const std::vector<std::u16string> awkward = {
        u"\"",      u"'",          u"<",          u">",         u"&",      u"]]>",    u"<!--",    u"&#0;",   u"&amp;",
        u" ",       u"\t",         u"\r",         u"\n",        u"\r\n",   u"$",      u";",       u"\\",     u"%",
        u"_x0001_", u"\U0001F5A8", u"\U0010FFFD", u"漢字",      u"\u0301", u"\u00A0", u"\u0085",  u"\u2028", u"\uFFFD",
        u"0",       u"-1",         u"360",        u"#00FF0000", u"True",   u"None",   u"psk:None"};
    // What XML cannot carry is rare, so that most texts can go.
    static const std::vector<std::u16string> impossible = {std::u16string(1, u'\0'),
                                                           u"\x01",
                                                           u"\x1B",
                                                           std::u16string(1, 0xD800),
                                                           std::u16string(1, 0xDFFF),
                                                           std::u16string(1, 0xFFFE),
                                                           std::u16string(1, 0xFFFF)};
    const std::size_t kind = below(100);
    if (kind == 0) return impossible[below(impossible.size())];
    if (kind < 60) return awkward[below(awkward.size())];
    return std::u16string(1, static_cast<char16_t>(u'A' + below(58)));
  }

  std::mt19937 engine;
};

const std::vector<std::u16string> freeTexts = {
    u"WatermarkSel",          u"WatermarkText",      u"WatermarkTextFont", u"WatermarkTextHeight",
    u"WatermarkTextWidth",    u"WatermarkTextStyle", u"OverlaySel",        u"MultipleOverlayDetails",
    u"OverlaySourceFileName", u"OverlayName",        u"OverlayImageName",  u"OverlayDestFileName"};

const std::vector<std::u16string> narrowTexts = {
    u"WatermarkLayering",         u"WatermarkTextAngle",   u"WatermarkTextColour", u"WatermarkTextFontSize",
    u"WatermarkTextTransparency", u"WatermarkTextOutline", u"WatermarkTextScale"};

// Whether it came back; fails when it came back as something else, or was refused without the property's name.
bool comesBack(TicketWorld& world, TicketWorld& receiver, const std::u16string& property, const std::u16string& value) {
  world.set(property, value);
  std::string ticket;
  try {
    ticket = world.service.document(*world.plugin, *world.model, Kiln::PTLevel::job);
  } catch (const std::runtime_error& refusal) {
    EXPECT_THAT(refusal.what(), testing::HasSubstr(Formats::toUtf8(property)));
    return false;
  }
  receiver.set(property, u"something else");
  receiver.load(ticket);
  EXPECT_EQ(receiver.value(property), value) << Formats::toUtf8(property);
  return true;
}

class FreeTexts : public testing::TestWithParam<std::size_t> {};

TEST_P(FreeTexts, ComeBackEqualOrAreRefused) {
  const std::u16string property = freeTexts[GetParam()];
  Random random(20240607 + static_cast<unsigned>(GetParam()));
  int carried = 0;
  int refused = 0;
  TicketWorld world;
  TicketWorld receiver;
  for (int round = 0; round < 300; ++round) {
    world.set(u"Watermark", round % 2 == 0 ? u"Watermark" : u"None");
    ++(comesBack(world, receiver, property, random.text(30)) ? carried : refused);
  }
  EXPECT_GT(carried, 210);
  EXPECT_GT(refused, 17);
}

INSTANTIATE_TEST_SUITE_P(RandomValues, FreeTexts, testing::Range<std::size_t>(0, freeTexts.size()),
                         [](const auto& tested) { return Formats::toUtf8(freeTexts[tested.param]); });

TEST(RandomValues, OfNarrowPropertiesComeBackEqualOrAreRefused) {
  Random random(7);
  int carried = 0;
  TicketWorld world;
  TicketWorld receiver;
  for (int round = 0; round < 500; ++round) {
    world.set(u"Watermark", round % 2 == 0 ? u"Watermark" : u"None");
    for (const auto& property : narrowTexts) {
      const auto usual = world.value(property);
      carried += comesBack(world, receiver, property, random.text(2)) ? 1 : 0;
      world.set(property, usual);
    }
  }
  EXPECT_GT(carried, 100);
}

TEST(RandomValues, EveryWholeNumberOfAnAngleComesBack) {
  TicketWorld world;
  TicketWorld receiver;
  world.set(u"Watermark", u"Watermark");
  for (int angle = -400; angle <= 800; ++angle) {
    const auto text = Formats::toUtf16(std::to_string(angle));
    EXPECT_TRUE(comesBack(world, receiver, u"WatermarkTextAngle", text)) << angle;
  }
  for (const char16_t* angle : {u"-2147483648", u"2147483647"})
    EXPECT_TRUE(comesBack(world, receiver, u"WatermarkTextAngle", angle));
  for (const char16_t* angle : {u"2147483648", u"-0", u"+5", u"1.5", u" 5", u""})
    EXPECT_FALSE(comesBack(world, receiver, u"WatermarkTextAngle", angle));
}

TEST(RandomValues, LongTextsComeBack) {
  Random random(1);
  std::u16string longText;
  while (longText.size() < 100'000) longText += random.text(1);
  std::erase_if(longText, [](char16_t unit) { return unit < u' ' || unit >= 0xD800; });
  longText += u"\U0001F5A8";
  TicketWorld world;
  TicketWorld receiver;
  world.set(u"Watermark", u"Watermark");
  for (const auto& property : freeTexts) EXPECT_TRUE(comesBack(world, receiver, property, longText));
}

TEST(RandomValues, ATextIsMeasuredInCharacters) {
  TicketWorld world;
  TicketWorld receiver;
  std::u16string text;
  for (int i = 0; i < 1'000'000; ++i) text += u"\U0001F5A8";
  EXPECT_TRUE(comesBack(world, receiver, u"OverlayName", text));
  EXPECT_FALSE(comesBack(world, receiver, u"OverlayName", text + u"x"));
}

}  // namespace
