// Properties to a ticket and back, through the effect plug-in: equal, whatever is switched on.
#include "tests/ticket/ticket_world.h"

#include <gtest/gtest.h>

namespace {

using Testing::TicketWorld;
using Testing::Values;

// Values of every effect property, none of which a model has at the start.
const Values others = {{u"WatermarkSel", u"WM_5F_1_2_3"},
                       {u"Watermark", u"Watermark"},
                       {u"FirstPageOnly", u"True"},
                       {u"WatermarkOccurance", u"PerPage"},
                       {u"WatermarkLayering", u"Underlay"},
                       {u"WatermarkText", u"Other"},
                       {u"WatermarkTextAngle", u"17"},
                       {u"WatermarkTextColour", u"#00FEDCBA"},
                       {u"WatermarkTextFont", u"Other"},
                       {u"WatermarkTextFontSize", u"11"},
                       {u"WatermarkTextHeight", u"L"},
                       {u"WatermarkTextWidth", u"R"},
                       {u"WatermarkTextOutline", u"True"},
                       {u"WatermarkTextScale", u"False"},
                       {u"WatermarkTextStyle", u"Italic"},
                       {u"WatermarkTextTransparency", u"99"},
                       {u"OverlaySel", u"99999.opa"},
                       {u"OverlayImage", u"OverlayImage"},
                       {u"OverlayOccurance", u"PerPage"},
                       {u"OverlayLayering", u"Overlay"},
                       {u"OverlayImageCreate", u"On"},
                       {u"MultipleOverlayDetails", u";$"},
                       {u"OverlaySourceFileName", u"other.opa"},
                       {u"OverlayName", u"Other"},
                       {u"OverlayImageName", u"Other"},
                       {u"OverlayDestFileName", u"other"},
                       {u"OvlDestCreated", u"True"},
                       {u"CancelJob", u"True"},
                       {u"Nin1", u"4in1"},
                       {u"NegativeImage", u"Negative"},
                       {u"MirrorImage", u"MirrorImage"},
                       {u"Rotate180", u"Rotate180"},
                       {u"Rotate180ForA3LD", u"Rotate180"}};

Values effectsOf(const TicketWorld& world) {
  Values values;
  for (const auto& [name, other] : others) values.emplace_back(name, world.value(name));
  return values;
}

// What the ticket of `world` gives a model that had other values of everything.
Values afterRoundTrip(TicketWorld& world, TicketWorld& receiver) {
  receiver.set(others);
  receiver.load(world.ticket());
  return effectsOf(receiver);
}

struct Choice {
  Values off;
  Values on;
};

const std::vector<Choice> switches = {{{{u"NegativeImage", u"None"}}, {{u"NegativeImage", u"Negative"}}},
                                      {{{u"MirrorImage", u"None"}}, {{u"MirrorImage", u"MirrorImage"}}},
                                      {{{u"Rotate180", u"None"}}, {{u"Rotate180", u"Rotate180"}}},
                                      {{{u"Rotate180ForA3LD", u"None"}}, {{u"Rotate180ForA3LD", u"Rotate180"}}},
                                      {{{u"FirstPageOnly", u"False"}}, {{u"FirstPageOnly", u"True"}}},
                                      {{{u"WatermarkOccurance", u"None"}}, {{u"WatermarkOccurance", u"PerPage"}}},
                                      {{{u"OverlayOccurance", u"None"}}, {{u"OverlayOccurance", u"PerPage"}}},
                                      {{{u"OverlayLayering", u"Underlay"}}, {{u"OverlayLayering", u"Overlay"}}}};

// No watermark, and one of each print style, as their selection writes them.
const std::vector<Values> watermarks = {{{u"WatermarkSel", u"0"},
                                         {u"Watermark", u"None"},
                                         {u"WatermarkText", u""},
                                         {u"WatermarkTextAngle", u"360"},
                                         {u"WatermarkTextColour", u"#00808080"},
                                         {u"WatermarkTextTransparency", u"0"},
                                         {u"WatermarkTextOutline", u"False"}},
                                        {{u"WatermarkSel", u"1"},
                                         {u"Watermark", u"Watermark"},
                                         {u"WatermarkText", u"Draft"},
                                         {u"WatermarkTextAngle", u"315"},
                                         {u"WatermarkTextColour", u"#00FF0000"},
                                         {u"WatermarkTextTransparency", u"0"},
                                         {u"WatermarkTextOutline", u"False"}},
                                        {{u"WatermarkSel", u"2_G"},
                                         {u"Watermark", u"Watermark"},
                                         {u"WatermarkText", u"極秘"},
                                         {u"WatermarkTextAngle", u"450"},
                                         {u"WatermarkTextColour", u"#0000ff00"},
                                         {u"WatermarkTextTransparency", u"0"},
                                         {u"WatermarkTextOutline", u"True"}},
                                        {{u"WatermarkSel", u"WM_65A1_0_7_EE1_2345"},
                                         {u"Watermark", u"Watermark"},
                                         {u"WatermarkText", u""},
                                         {u"WatermarkTextAngle", u"360"},
                                         {u"WatermarkTextColour", u"#00000000"},
                                         {u"WatermarkTextTransparency", u"100"},
                                         {u"WatermarkTextOutline", u"False"}}};

const std::vector<Values> overlays = {{{u"OverlaySel", u"None"},
                                       {u"OverlayImage", u"None"},
                                       {u"OverlaySourceFileName", u""},
                                       {u"MultipleOverlayDetails", u""}},
                                      {{u"OverlaySel", u"01234.opa"},
                                       {u"OverlayImage", u"OverlayImage"},
                                       {u"OverlaySourceFileName", u"C:\\Users\\x\\overlays\\01234.opa"},
                                       {u"MultipleOverlayDetails", u""}},
                                      {{u"OverlaySel", u"Multiple"},
                                       {u"OverlayImage", u"MultipleOverlayImage"},
                                       {u"OverlaySourceFileName", u"/home/x y/01234.opa;All$/home/x y/2.opa;1,3,5-9$"},
                                       {u"MultipleOverlayDetails", u"01234.opa;All$;$2.opa;1,3,5-9$;$;$;$;$;$"}}};

// Every combination of the switches, with one watermark and one selection of overlays each.
class Selections : public testing::TestWithParam<std::tuple<std::size_t, std::size_t>> {};

TEST_P(Selections, RoundTripIsEqualForEveryCombinationOfEffects) {
  TicketWorld world;
  TicketWorld receiver;
  world.set(watermarks[std::get<0>(GetParam())]);
  world.set(overlays[std::get<1>(GetParam())]);
  for (unsigned bits = 0; bits < 1u << switches.size(); ++bits) {
    for (std::size_t i = 0; i < switches.size(); ++i)
      world.set((bits >> i & 1) != 0 ? switches[i].on : switches[i].off);
    const auto before = effectsOf(world);
    ASSERT_EQ(afterRoundTrip(world, receiver), before);
    ASSERT_EQ(effectsOf(world), before) << "making the ticket changed the properties";
  }
}

INSTANTIATE_TEST_SUITE_P(OfWatermarkAndOverlay, Selections,
                         testing::Combine(testing::Range<std::size_t>(0, 4), testing::Range<std::size_t>(0, 3)));

TEST(RoundTrip, SelectionsAreAllTried) {
  EXPECT_EQ(switches.size(), 8U);
  EXPECT_EQ(watermarks.size(), 4U);
  EXPECT_EQ(overlays.size(), 3U);
}

TEST(RoundTrip, CarriesEveryEffectPropertyOfTheModel) {
  TicketWorld world;
  TicketWorld receiver;
  world.set(others);
  receiver.load(world.ticket());
  EXPECT_EQ(effectsOf(receiver), others);
}

TEST(RoundTrip, CarriesTheModelsOwnDefaults) {
  for (const std::string& name : Refhost::shippedModels(std::filesystem::path(RESOURCES_FOLDER) / "models")) {
    TicketWorld world(name);
    TicketWorld receiver(name);
    EXPECT_EQ(afterRoundTrip(world, receiver), effectsOf(world)) << name;
  }
}

TEST(RoundTrip, LeavesPropertiesAloneThatAreNoEffects) {
  TicketWorld world;
  world.set({{u"PaperSize", u"A3"}, {u"ColourMode", u"Monochrome"}, {u"ModelNumber", u"KVT"}});
  const auto before = world.model->values();
  TicketWorld plain;
  world.load(plain.ticket());
  EXPECT_EQ(world.model->values(), before);
}

TEST(RoundTrip, MultipleOverlaysLeaveAsThePlainOverlayOption) {
  TicketWorld world;
  world.set(overlays[2]);
  EXPECT_NE(world.ticket().find("<psf:Option name=\"kw:OverlayImage\">"), std::string::npos);
  EXPECT_EQ(world.value(u"OverlayImage"), u"MultipleOverlayImage");
}

TEST(RoundTrip, GivesTheSameBytesAgain) {
  TicketWorld world;
  world.set(others);
  const std::string first = world.ticket();
  TicketWorld receiver;
  receiver.load(first);
  EXPECT_EQ(receiver.ticket(), first);
}

TEST(RoundTrip, APageTicketLeavesJobSettingsOut) {
  TicketWorld world;
  world.set(others);
  const std::string page = world.ticket(Kiln::PTLevel::page);
  EXPECT_EQ(page.find("Job"), std::string::npos);
  EXPECT_NE(page.find("psk:PageWatermark"), std::string::npos);
  TicketWorld receiver;
  receiver.load(page);
  EXPECT_EQ(receiver.value(u"OverlayImage"), u"None");
  EXPECT_EQ(receiver.value(u"WatermarkText"), u"Other");
}

}  // namespace
