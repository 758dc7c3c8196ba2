// What a reader of the public Print Schema sees in a ticket.
#include "tests/ticket/ticket_world.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using Testing::replaced;
using Testing::TicketWorld;

std::string init(const std::string& name, const std::string& type, const std::string& value) {
  return "  <psf:ParameterInit name=\"" + name + "\">\n    <psf:Value xsi:type=\"xsd:" + type + "\">" + value +
         "</psf:Value>\n  </psf:ParameterInit>\n";
}

TicketWorld& withWatermark(TicketWorld& world) {
  world.set({{u"Watermark", u"Watermark"}, {u"WatermarkText", u"Draft"}});
  return world;
}

TEST(PublicForm, TheRootIsAPrintTicketOfTheFrameworkWithItsVersion) {
  TicketWorld world;
  EXPECT_THAT(
      world.ticket(),
      testing::StartsWith(
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<psf:PrintTicket"
          " xmlns:psf=\"http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework\""
          " xmlns:psk=\"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords\""
          " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\""
          " xmlns:kw=\"urn:kilnworks:printschema:effect:1\" version=\"1\">\n"));
}

TEST(PublicForm, TheElementThatAPlugInGetsBackIsAValidRootAlready) {
  TicketWorld world;
  const auto root = Kiln::smartCast<Refhost::Node>(world.plugin->convertPMtoPT(*world.model, Kiln::PTLevel::job));
  EXPECT_EQ(root->nameSpace, Refhost::PrintSchema::framework);
  EXPECT_EQ(Refhost::writeXml(*root), world.ticket());
}

TEST(PublicForm, MirrorAndNegativeAreTheStandardFeatures) {
  TicketWorld world;
  world.set({{u"MirrorImage", u"MirrorImage"}, {u"NegativeImage", u"None"}});
  EXPECT_THAT(world.ticket(), HasSubstr("  <psf:Feature name=\"psk:PageMirrorImage\">\n"
                                        "    <psf:Option name=\"psk:MirrorImageWidth\"/>\n  </psf:Feature>\n"
                                        "  <psf:Feature name=\"psk:PageNegativeImage\">\n"
                                        "    <psf:Option name=\"psk:None\"/>\n  </psf:Feature>\n"));
}

TEST(PublicForm, MirrorAndNegativeHaveTheSystemsOwnKeywordsToo) {
  TicketWorld world;
  world.set({{u"MirrorImage", u"MirrorImage"}, {u"NegativeImage", u"Negative"}});
  EXPECT_THAT(world.ticket(), HasSubstr("  <psf:Feature name=\"kw:ePTKWPageMirrorImage\">\n"
                                        "    <psf:Option name=\"kw:MirrorImage\"/>\n  </psf:Feature>\n"
                                        "  <psf:Feature name=\"kw:ePTKWPageNegativeImage\">\n"
                                        "    <psf:Option name=\"kw:Negative\"/>\n  </psf:Feature>\n"));
  EXPECT_THAT(world.capabilities(), HasSubstr("<psf:Feature name=\"kw:ePTKWPageNegativeImage\">"));
}

TEST(PublicForm, AWatermarkIsTheStandardFeatureWithItsParameters) {
  TicketWorld world;
  withWatermark(world).set({{u"WatermarkTextAngle", u"315"},
                            {u"WatermarkTextColour", u"#00FF8000"},
                            {u"WatermarkTextFontSize", u"72"},
                            {u"WatermarkTextTransparency", u"30"},
                            {u"WatermarkLayering", u"Underlay"}});
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, HasSubstr("  <psf:Feature name=\"psk:PageWatermark\">\n"
                                "    <psf:Option name=\"psk:Text\">\n"
                                "      <psf:ScoredProperty name=\"psk:Text\">\n"
                                "        <psf:ParameterRef name=\"psk:PageWatermarkTextText\"/>\n"));
  EXPECT_THAT(ticket, HasSubstr("    <psf:Feature name=\"psk:Layering\">\n"
                                "      <psf:Option name=\"psk:Underlay\"/>\n    </psf:Feature>\n"));
  EXPECT_THAT(ticket, HasSubstr(init("psk:PageWatermarkTextText", "string", "Draft")));
  EXPECT_THAT(ticket, HasSubstr(init("psk:PageWatermarkTextColor", "string", "#FFFF8000")));
  EXPECT_THAT(ticket, HasSubstr(init("psk:PageWatermarkTextFontSize", "integer", "72")));
  EXPECT_THAT(ticket, HasSubstr(init("psk:PageWatermarkTextAngle", "integer", "315")));
  EXPECT_THAT(ticket, HasSubstr(init("psk:PageWatermarkTransparency", "integer", "30")));
  EXPECT_THAT(ticket, Not(HasSubstr("ePTKWPageWatermark_TextAngle"))) << "what the public value says is said once";
}

TEST(PublicForm, NoWatermarkLeavesTheFeatureAndItsParametersOut) {
  TicketWorld world;
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, Not(HasSubstr("\"psk:PageWatermark")));
  EXPECT_THAT(ticket, HasSubstr(init("kw:ePTKWPageWatermark_TextAngle", "integer", "360")));
}

struct Unfit {
  const char16_t* property;
  const char16_t* value;
  std::string publicName;
  std::string publicType;
  std::string publicValue;
  std::string exactName;
};

class UnfitValue : public testing::TestWithParam<Unfit> {};

TEST_P(UnfitValue, IsShownAsTheNearestPublicOneAndCarriedAsItIs) {
  TicketWorld world;
  withWatermark(world).set(GetParam().property, GetParam().value);
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, HasSubstr(init(GetParam().publicName, GetParam().publicType, GetParam().publicValue)));
  EXPECT_THAT(ticket, HasSubstr("<psf:ParameterInit name=\"" + GetParam().exactName + "\">"));
  TicketWorld receiver;
  receiver.set(GetParam().property, u"9");
  receiver.load(ticket);
  EXPECT_EQ(receiver.value(GetParam().property), GetParam().value);
}

TEST_P(UnfitValue, GivesWayToAnotherPublicValueThatSomebodyPutThere) {
  TicketWorld world;
  withWatermark(world).set(GetParam().property, GetParam().value);
  const bool isColour = GetParam().publicValue.starts_with("#");
  const std::string changed =
      replaced(world.ticket(), init(GetParam().publicName, GetParam().publicType, GetParam().publicValue),
               init(GetParam().publicName, GetParam().publicType, isColour ? "#FF112233" : "42"));
  TicketWorld receiver;
  receiver.load(changed);
  EXPECT_EQ(receiver.value(GetParam().property), isColour ? u"#00112233" : u"42");
}

INSTANTIATE_TEST_SUITE_P(Each, UnfitValue,
                         testing::Values(Unfit{u"WatermarkTextAngle", u"360", "psk:PageWatermarkTextAngle", "integer",
                                               "0", "kw:ePTKWPageWatermark_TextAngle"},
                                         Unfit{u"WatermarkTextAngle", u"450", "psk:PageWatermarkTextAngle", "integer",
                                               "90", "kw:ePTKWPageWatermark_TextAngle"},
                                         Unfit{u"WatermarkTextAngle", u"-1", "psk:PageWatermarkTextAngle", "integer",
                                               "359", "kw:ePTKWPageWatermark_TextAngle"},
                                         Unfit{u"WatermarkTextTransparency", u"250", "psk:PageWatermarkTransparency",
                                               "integer", "100", "kw:ePTKWPageWatermark_TextTransparency"},
                                         Unfit{u"WatermarkTextFontSize", u"0", "psk:PageWatermarkTextFontSize",
                                               "integer", "1", "kw:ePTKWPageWatermark_TextFontSize"},
                                         Unfit{u"WatermarkText", u"", "psk:PageWatermarkTextText", "string", " ",
                                               "kw:ePTKWPageWatermark_Text"},
                                         Unfit{u"WatermarkTextColour", u"#00F00", "psk:PageWatermarkTextColor",
                                               "string", "#FF808080", "kw:ePTKWPageWatermark_TextColour"},
                                         Unfit{u"WatermarkTextColour", u"#0a123456", "psk:PageWatermarkTextColor",
                                               "string", "#F5123456", "kw:ePTKWPageWatermark_TextColour"}));

TEST(PublicForm, AColoursOpacityInTheTicketIsItsTransparencyInTheProperty) {
  TicketWorld world;
  withWatermark(world).set(u"WatermarkTextColour", u"#40ABCDEF");
  EXPECT_THAT(world.ticket(), HasSubstr(init("psk:PageWatermarkTextColor", "string", "#BFABCDEF")));
}

}  // namespace
