// What a ticket says that the schema does not know goes into the next ticket unchanged.
#include "host/ticket/names.h"
#include "tests/ticket/ticket_world.h"
#include "tests/ticket/validity.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using Testing::ticketAround;
using Testing::TicketWorld;

TEST(ForeignContent, FeaturesParametersAndPropertiesAreKept) {
  const std::string feature =
      "  <psf:Feature name=\"psk:JobDuplexAllDocumentsContiguously\">\n    <psf:Option name=\"psk:TwoSidedLongEdge\">\n"
      "      <psf:ScoredProperty name=\"psk:DuplexMode\">\n        <psf:Value xsi:type=\"xsd:string\">Automatic"
      "</psf:Value>\n      </psf:ScoredProperty>\n    </psf:Option>\n  </psf:Feature>\n";
  const std::string parameter = "  <psf:ParameterInit name=\"psk:JobCopiesAllDocuments\">\n    <psf:Value "
                                "xsi:type=\"xsd:integer\">3</psf:Value>\n"
                                "  </psf:ParameterInit>\n";
  const std::string property = "  <psf:Property name=\"kw:Unknown\">\n    <psf:Value xsi:type=\"xsd:string\"> "
                               "&lt;a&amp;b&gt;&#13; </psf:Value>\n"
                               "  </psf:Property>\n";
  TicketWorld world;
  world.load(ticketAround(feature + parameter + property));
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, HasSubstr(feature));
  EXPECT_THAT(ticket, HasSubstr(parameter));
  EXPECT_THAT(ticket, HasSubstr(property));
}

TEST(ForeignContent, WhoseNameHasAPrefixThatIsNotDeclaredIsLeftOut) {
  TicketWorld world;
  world.load(R"(<PrintTicket version="1"
    xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
    xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords">
  <ParameterInit name="kw:ePTKWPageWatermark_Text"/>
  <Feature name="psk:PageMirrorImage"><Property name="kw:Any"/><Option name="psk:MirrorImageWidth"/></Feature>
</PrintTicket>)");
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, Not(HasSubstr("kw:Any")));
  TicketWorld receiver;
  EXPECT_EQ(receiver.refusalOf(ticket), "");
  EXPECT_EQ(receiver.value(u"MirrorImage"), u"MirrorImage");
}

TEST(ForeignContent, PrefixesStillStandForWhatTheyStoodFor) {
  // "psk" is somebody else's here, "ns" is declared above and "psf" is the default.
  TicketWorld world;
  world.load(R"(<PrintTicket version="1" xmlns:ns="urn:somebody" xmlns:psk="urn:other"
    xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
    xmlns:i="http://www.w3.org/2001/XMLSchema-instance" xmlns:t="http://www.w3.org/2001/XMLSchema">
  <Feature name="ns:Feature"><Option name="psk:Option">
    <ScoredProperty name="ns:S"><Value i:type="t:QName">psk:Meaning</Value></ScoredProperty></Option></Feature>
</PrintTicket>)");
  const auto root = Refhost::readXml(world.ticket(), "ticket", Refhost::documentLimits);
  const Refhost::Node& feature = *root->children().back();
  const Refhost::Scope rootScope(*root);
  const Refhost::Scope scope(feature, rootScope);
  EXPECT_TRUE(Refhost::isFrameworkElement(feature, u"Feature"));
  EXPECT_EQ(scope.resolveAttribute(feature, u"name"), (Refhost::QName{u"Feature", u"urn:somebody"}));
  const Refhost::Node& option = *feature.children().front();
  EXPECT_EQ(scope.resolveAttribute(option, u"name"), (Refhost::QName{u"Option", u"urn:other"}));
  const Refhost::Node& value = *option.children().front()->children().front();
  EXPECT_EQ(scope.resolve(value.text()), (Refhost::QName{u"Meaning", u"urn:other"}));
  EXPECT_EQ(scope.resolve(*Refhost::attributeOf(value, Refhost::PrintSchema::instance, u"type")),
            (Refhost::QName{u"QName", std::u16string(Refhost::PrintSchema::dataTypes)}));
}

const std::string watermarkWithPlace = ticketAround(
    R"(<psf:Feature name="psk:PageWatermark" xmlns:x="urn:x">
  <psf:Property name="x:OfFeature"/>
  <psf:Option name="psk:Text" xmlns:y="urn:y">
    <psf:ScoredProperty name="psk:OriginWidth">
      <psf:ParameterRef name="psk:PageWatermarkOriginWidth"/></psf:ScoredProperty>
    <psf:ScoredProperty name="psk:Text"><psf:Value xsi:type="xsd:string">Draft</psf:Value></psf:ScoredProperty>
    <psf:Property name="y:OfOption"/>
  </psf:Option>
  <psf:Feature name="psk:Layering"><psf:Option name="psk:Overlay"/><psf:Property name="x:OfInner"/></psf:Feature>
  <psf:Feature name="x:Unknown"><psf:Option name="x:On"/></psf:Feature>
</psf:Feature>
<psf:ParameterInit name="psk:PageWatermarkOriginWidth">
  <psf:Value xsi:type="xsd:integer">9000</psf:Value></psf:ParameterInit>)");

TEST(ForeignContent, UnknownPartsOfAKnownFeatureAreKeptInTheirPlace) {
  TicketWorld world;
  world.load(watermarkWithPlace);
  const std::string ticket = world.ticket();
  EXPECT_THAT(ticket, HasSubstr("<psf:Feature xmlns:x=\"urn:x\" name=\"psk:PageWatermark\">"));
  EXPECT_THAT(ticket, HasSubstr("<psf:Option xmlns:y=\"urn:y\" name=\"psk:Text\">"));
  EXPECT_THAT(ticket,
              HasSubstr("      <psf:ScoredProperty name=\"psk:OriginWidth\">\n"
                        "        <psf:ParameterRef name=\"psk:PageWatermarkOriginWidth\"/>\n"
                        "      </psf:ScoredProperty>\n      <psf:Property name=\"y:OfOption\"/>\n    </psf:Option>\n"
                        "    <psf:Feature name=\"psk:Layering\">\n      <psf:Option name=\"psk:Overlay\"/>\n"
                        "      <psf:Property name=\"x:OfInner\"/>\n    </psf:Feature>\n"
                        "    <psf:Property name=\"x:OfFeature\"/>\n"
                        "    <psf:Feature name=\"x:Unknown\">\n      <psf:Option name=\"x:On\"/>\n"));
  EXPECT_THAT(ticket, HasSubstr("  <psf:ParameterInit name=\"psk:PageWatermarkOriginWidth\">\n"));
}

TEST(ForeignContent, PartsOfAFeatureGoWithTheFeature) {
  TicketWorld world;
  world.load(watermarkWithPlace);
  world.set(u"Watermark", u"None");
  EXPECT_THAT(world.ticket(), Not(HasSubstr("OfOption")));
  world.set(u"Watermark", u"Watermark");
  EXPECT_THAT(world.ticket(), HasSubstr("OfOption"));
}

TEST(ForeignContent, IsNotDoubledByLoadingWhatWasWritten) {
  TicketWorld world;
  world.load(watermarkWithPlace);
  const std::string once = world.ticket();
  world.load(once);
  EXPECT_EQ(world.ticket(), once);
}

TEST(ForeignContent, IsThatOfTheLastTicketThatWasLoaded) {
  TicketWorld world;
  world.load(ticketAround("<psf:Property name=\"kw:First\"/>"));
  world.load(ticketAround("<psf:Property name=\"kw:Second\"/>"));
  EXPECT_THAT(world.ticket(), Not(HasSubstr("kw:First")));
  EXPECT_NE(world.refusalOf(ticketAround("<psf:Property name=\"kw:Third\"/>text")), "");
  EXPECT_THAT(world.ticket(), HasSubstr("kw:Second"));
}

}  // namespace
