// Tickets that others wrote.
#include "tests/ticket/ticket_world.h"

#include <gtest/gtest.h>

namespace {

using Testing::ticketAround;
using Testing::TicketWorld;

const std::string mirrored =
    R"(<psf:Feature name="psk:PageMirrorImage"><psf:Option name="psk:MirrorImageWidth"/></psf:Feature>)";

TEST(Reading, OtherPrefixesMeanTheSame) {
  TicketWorld world;
  world.load(R"(<PrintTicket version="1"
    xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
    xmlns:k="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords">
  <Feature name="k:PageMirrorImage"><Option name="k:MirrorImageWidth"/></Feature>
  <Feature name="k:PageWatermark">
    <Option name="k:Text"><ScoredProperty name="k:Angle">
      <ParameterRef name="k:PageWatermarkTextAngle"/></ScoredProperty></Option>
    <Feature name="k:Layering"><Option name="k:Underlay"/></Feature>
  </Feature>
  <a:ParameterInit xmlns:a="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
      xmlns:b="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
      name="b:PageWatermarkTextAngle">
    <a:Value xmlns:i="http://www.w3.org/2001/XMLSchema-instance" xmlns:t="http://www.w3.org/2001/XMLSchema"
        i:type="t:integer">90</a:Value>
  </a:ParameterInit>
</PrintTicket>)");
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  EXPECT_EQ(world.value(u"Watermark"), u"Watermark");
  EXPECT_EQ(world.value(u"WatermarkLayering"), u"Underlay");
  EXPECT_EQ(world.value(u"WatermarkTextAngle"), u"90");
}

TEST(Reading, APrefixThatStandsForAnotherNamespaceIsAnotherName) {
  TicketWorld world;
  world.load(ticketAround(R"(<psf:Feature xmlns:psk="urn:somebody" name="psk:PageMirrorImage">
    <psf:Option name="psk:MirrorImageWidth"/></psf:Feature>)"));
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
}

TEST(Reading, AnElementOfAnotherNamespaceIsNoFeature) {
  TicketWorld world;
  world.load(
      ticketAround(R"(<kw:Feature name="psk:PageMirrorImage"><kw:Option name="psk:MirrorImageWidth"/></kw:Feature>)"));
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
}

TEST(Reading, OrderAndCommentsDoNotMatter) {
  TicketWorld writer;
  writer.set({{u"Watermark", u"Watermark"}, {u"WatermarkText", u"one"}, {u"WatermarkTextAngle", u"360"}});
  const auto root = Refhost::readXml(writer.ticket(), "ticket", Refhost::documentLimits);
  const auto turned = Refhost::make<Refhost::Node>(u"PrintTicket");
  turned->nameSpace = root->nameSpace;
  turned->prefix = root->prefix;
  turned->attributes = root->attributes;
  turned->declarations = root->declarations;
  const auto& children = root->children();
  for (auto child = children.rbegin(); child != children.rend(); ++child) turned->append((*child)->copy());
  const std::string commented = Testing::replaced(Refhost::writeXml(*turned), ">one<", "><!-- a -->on<!-- b -->e<");
  TicketWorld world;
  world.load(commented);
  EXPECT_EQ(world.model->values(), writer.model->values());
}

TEST(Reading, WhatTheTicketDoesNotSayStays) {
  TicketWorld world;
  world.set({{u"NegativeImage", u"Negative"}, {u"OverlaySel", u"1.opa"}, {u"WatermarkTextFont", u"Serif"}});
  world.load(ticketAround(mirrored));
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
  EXPECT_EQ(world.value(u"OverlaySel"), u"1.opa");
  EXPECT_EQ(world.value(u"WatermarkTextFont"), u"Serif");
}

TEST(Reading, TheSystemsOwnKeywordsAreEnough) {
  TicketWorld world;
  const std::string own =
      R"(<psf:Feature name="kw:ePTKWPageMirrorImage"><psf:Option name="kw:MirrorImage"/></psf:Feature>
    <psf:Feature name="kw:ePTKWPageNegativeImage"><psf:Option name="kw:Negative"/></psf:Feature>)";
  world.load(ticketAround(own));
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
}

TEST(Reading, ThePublicKeywordsWinOverTheSystemsOwn) {
  const std::string own = R"(<psf:Feature name="kw:ePTKWPageMirrorImage"><psf:Option name="psk:None"/></psf:Feature>)";
  for (const std::string& both : {mirrored + own, own + mirrored}) {
    TicketWorld world;
    world.load(ticketAround(both));
    EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  }
}

TEST(Reading, ATicketWithoutTheWatermarkFeatureHasNoWatermark) {
  TicketWorld world;
  world.set({{u"Watermark", u"Watermark"}, {u"WatermarkSel", u"3"}});
  world.load(ticketAround(mirrored));
  EXPECT_EQ(world.value(u"Watermark"), u"None");
  EXPECT_EQ(world.value(u"WatermarkSel"), u"0");
}

TEST(Reading, AScoredPropertyCanHoldItsValueItself) {
  TicketWorld world;
  world.load(ticketAround(R"(<psf:Feature name="psk:PageWatermark"><psf:Option name="psk:Text">
    <psf:ScoredProperty name="psk:Text"><psf:Value xsi:type="xsd:string">Copy</psf:Value></psf:ScoredProperty>
    <psf:ScoredProperty name="psk:FontColor"><psf:Value xsi:type="xsd:string">#80102030</psf:Value></psf:ScoredProperty>
    </psf:Option></psf:Feature>)"));
  EXPECT_EQ(world.value(u"WatermarkText"), u"Copy");
  EXPECT_EQ(world.value(u"WatermarkTextColour"), u"#7F102030");
}

TEST(Reading, IntegersMayHaveSpacesSignsAndLeadingZeros) {
  TicketWorld world;
  world.load(
      ticketAround("<psf:ParameterInit name=\"psk:PageWatermarkTextAngle\"><psf:Value xsi:type=\"xsd:integer\">\n +045 "
                   "</psf:Value></psf:ParameterInit>"));
  EXPECT_EQ(world.value(u"WatermarkTextAngle"), u"45");
}

TEST(Reading, SpacesAndLineEndsOfATextAreKept) {
  TicketWorld writer;
  writer.set({{u"Watermark", u"Watermark"}, {u"WatermarkText", u" \r\n\ta\rb\n "}, {u"WatermarkTextFont", u"  "}});
  TicketWorld world;
  world.load(writer.ticket());
  EXPECT_EQ(world.value(u"WatermarkText"), u" \r\n\ta\rb\n ");
  EXPECT_EQ(world.value(u"WatermarkTextFont"), u"  ");
}

TEST(Reading, AByteOrderMarkAndUtf16Read) {
  TicketWorld world;
  std::string utf16 = "\xFF\xFE";
  for (const char c : Testing::replaced(ticketAround(mirrored), "UTF-8", "UTF-16")) utf16 += {c, '\0'};
  world.load(utf16);
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
}

}  // namespace
