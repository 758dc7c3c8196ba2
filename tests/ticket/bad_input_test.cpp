// Tickets that are refused: one sentence with line and name, and every property as it was.
#include "host/plugin_failures.h"
#include "tests/ticket/ticket_world.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using Testing::ticketAround;
using Testing::TicketWorld;

// A ticket that changes much before it comes to its fault, in line 9.
std::string spoilt(std::string_view ninthLine) {
  return ticketAround(R"(<psf:Feature name="psk:PageMirrorImage"><psf:Option name="psk:MirrorImageWidth"/></psf:Feature>
<psf:Feature name="psk:PageNegativeImage"><psf:Option name="psk:Negative"/></psf:Feature>
)" + std::string(ninthLine));
}

std::string init(const std::string& name, const std::string& value) {
  return "<psf:ParameterInit name=\"" + name + "\">" + value + "</psf:ParameterInit>";
}

struct Fault {
  std::string line;
  std::string sentence;
};

class BadTicket : public testing::TestWithParam<Fault> {};

TEST_P(BadTicket, IsRefusedWithItsLineAndName) {
  TicketWorld world;
  world.set({{u"Watermark", u"Watermark"}, {u"OverlaySel", u"1.opa"}});
  EXPECT_EQ(world.refusalOf(spoilt(GetParam().line)), "job.xml:9: " + GetParam().sentence);
}

const std::string value45 = "<psf:Value xsi:type=\"xsd:integer\">45</psf:Value>";

INSTANTIATE_TEST_SUITE_P(
    Each, BadTicket,
    testing::Values(
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"xsd:integer\">360</psf:Value>"),
              "psk:PageWatermarkTextAngle is \"360\", not 0 to 359."},
        Fault{
            init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"xsd:integer\">99999999999999999999</psf:Value>"),
            "psk:PageWatermarkTextAngle is \"99999999999999999999\", not 0 to 359."},
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"xsd:integer\">steep</psf:Value>"),
              "psk:PageWatermarkTextAngle is \"steep\", which is no whole number."},
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"xsd:integer\"/>"),
              "psk:PageWatermarkTextAngle is \"\", which is no whole number."},
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"xsd:string\">45</psf:Value>"),
              "psk:PageWatermarkTextAngle is not of the type xsd:integer."},
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value xsi:type=\"psk:integer\">45</psf:Value>"),
              "psk:PageWatermarkTextAngle is not of the type xsd:integer."},
        Fault{init("psk:PageWatermarkTextAngle", "<psf:Value>45</psf:Value>"),
              "psk:PageWatermarkTextAngle is not of the type xsd:integer."},
        Fault{init("psk:PageWatermarkTextAngle", ""), "psk:PageWatermarkTextAngle does not have one Value."},
        Fault{init("psk:PageWatermarkTextAngle", value45 + value45),
              "psk:PageWatermarkTextAngle does not have one Value."},
        Fault{init("psk:PageWatermarkTextAngle", "<kw:Value xsi:type=\"xsd:integer\">45</kw:Value>"),
              "psk:PageWatermarkTextAngle does not have one Value."},
        Fault{init("psk:PageWatermarkTextAngle", value45) + init("psk:PageWatermarkTextAngle", value45),
              "psk:PageWatermarkTextAngle stands twice."},
        Fault{init("psk:PageWatermarkTextText", "<psf:Value xsi:type=\"xsd:string\"/>"),
              "psk:PageWatermarkTextText has 0 characters, not 1 to 1000000."},
        Fault{init("psk:PageWatermarkTextColor", "<psf:Value xsi:type=\"xsd:string\">#808080</psf:Value>"),
              "psk:PageWatermarkTextColor is \"#808080\", which is no colour such as \"#FF808080\"."},
        Fault{init("kw:ePTKWPageWatermark_Layering", "<psf:Value xsi:type=\"xsd:string\">Beside</psf:Value>"),
              "kw:ePTKWPageWatermark_Layering is \"Beside\", which is no value of psk:Layering."},
        Fault{"<psf:Feature name=\"kw:ePTKWPageRotate180\"><psf:Option name=\"kw:Rotate90\"/></psf:Feature>",
              "kw:ePTKWPageRotate180 has no option kw:Rotate90."},
        Fault{
            "<psf:Feature name=\"kw:ePTKWPageRotate180\" xmlns:x=\"urn:x\"><psf:Option name=\"x:None\"/></psf:Feature>",
            "kw:ePTKWPageRotate180 has no option {urn:x}None."},
        Fault{"<psf:Feature name=\"kw:ePTKWPageRotate180\"><psf:Option/></psf:Feature>",
              "kw:ePTKWPageRotate180 has no option without a name."},
        Fault{"<psf:Feature name=\"kw:ePTKWPageRotate180\"/>", "kw:ePTKWPageRotate180 has no Option."},
        Fault{"<psf:Feature name=\"kw:ePTKWPageRotate180\"><psf:Option name=\"psk:None\"/><psf:Option "
              "name=\"psk:None\"/></psf:Feature>",
              "kw:ePTKWPageRotate180 has more than one Option."},
        Fault{"<psf:Feature name=\"psk:PageMirrorImage\"><psf:Option name=\"psk:None\"/></psf:Feature>",
              "psk:PageMirrorImage stands twice."},
        Fault{"<psf:Feature name=\"kw:ePTKWPageMirrorImage\"><psf:Option name=\"kw:Sideways\"/></psf:Feature>",
              "kw:ePTKWPageMirrorImage has no option kw:Sideways."},
        Fault{"<psf:Feature name=\"psk:PageWatermark\"><psf:Option name=\"psk:Text\"><psf:ScoredProperty "
              "name=\"psk:Text\"><psf:ParameterRef name=\"psk:PageWatermarkTextText\"/></psf:ScoredProperty>"
              "</psf:Option></psf:Feature>",
              "psk:PageWatermarkTextText is referred to, but has no ParameterInit."},
        Fault{
            "<psf:Feature name=\"psk:PageWatermark\"><psf:Option name=\"psk:Text\"><psf:ScoredProperty "
            "name=\"psk:Text\"><psf:ParameterRef name=\"psk:Other\"/></psf:ScoredProperty></psf:Option></psf:Feature>",
            "psk:Text does not refer to psk:PageWatermarkTextText."},
        Fault{"<psf:Feature name=\"psk:PageWatermark\"><psf:Option name=\"psk:Text\"><psf:ScoredProperty "
              "name=\"psk:Text\"/></psf:Option></psf:Feature>",
              "psk:Text does not have one Value or ParameterRef."},
        Fault{"<psf:Feature name=\"kw:Unknown\">text<psf:Option/></psf:Feature>",
              "there is text beside the elements in Feature."}));

TEST(BadInput, WhatIsNoPrintTicketIsRefused) {
  TicketWorld world;
  EXPECT_EQ(world.refusalOf("<a/>"),
            "job.xml:1: the root element is a, not PrintTicket of the Print Schema framework.");
  EXPECT_EQ(world.refusalOf("<PrintTicket version=\"1\"/>"),
            "job.xml:1: the root element is PrintTicket, not PrintTicket of the Print Schema framework.");
  EXPECT_EQ(world.refusalOf(Testing::replaced(ticketAround(""), "<psf:PrintTicket version=\"1\"", "<psf:PrintTicket")),
            "job.xml:2: the root element PrintTicket does not have the version \"1\".");
}

TEST(BadInput, WhatIsNotWellFormedIsRefusedWithItsLine) {
  TicketWorld world;
  for (const std::string bytes : {"", " ", "<", "nonsense", "\xFF\xFE\xFF", "<a><b></a>"})
    EXPECT_THAT(world.refusalOf(bytes), StartsWith("job.xml:1: ")) << bytes;
  const std::string whole = spoilt("");
  for (std::size_t length = 0; length + 20 < whole.size(); length += 7)
    EXPECT_THAT(world.refusalOf(whole.substr(0, length)), StartsWith("job.xml:")) << length;
}

TEST(BadInput, EntitiesAreNeverExpanded) {
  TicketWorld world;
  const std::string bomb = "<!DOCTYPE t [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
                           "\"&b;&b;&b;&b;&b;\">]>";
  EXPECT_THAT(world.refusalOf(Testing::replaced(ticketAround("&c;"), "<psf:PrintTicket", bomb + "<psf:PrintTicket")),
              HasSubstr("DOCTYPE"));
  EXPECT_THAT(world.refusalOf("<!DOCTYPE t SYSTEM \"file:///etc/passwd\"><t/>"), HasSubstr("DOCTYPE"));
}

TEST(BadInput, NestingAndSizeHaveLimits) {
  TicketWorld world;
  std::string nested;
  while (nested.size() < 10'000'000) nested += "<psf:Feature name=\"kw:a\">";
  EXPECT_THAT(world.refusalOf(ticketAround(nested)), MatchesRegex("job\\.xml:7: .+ deeper .+"));
  std::string large;
  while (large.size() < 100'000'000) large += nested;
  EXPECT_THAT(world.refusalOf(large), HasSubstr("larger"));
}

TEST(BadInput, AnAfterthoughtOfThePlugInThatFailsLeavesThePropertiesAsTheyWere) {
  TicketWorld world;
  const auto plain = Refhost::make<Testing::PlainPlugin>(world.host, u"chrome://effect/content/schema_effect.xml");
  plain->afterReading = [] { throw Refhost::failure("Out of luck."); };
  world.plugin = plain;
  EXPECT_EQ(world.refusalOf(spoilt("")), "Out of luck.");
}

// A plug-in whose every conversion fails.
class FailingPlugin final : public Kiln::PTPlugin {
 public:
  explicit FailingPlugin(Kiln::Host& lender) : PTPlugin(lender) {}
  Kiln::SmartPtr<Kiln::Dom::INode> getSchema() override { throw Kiln::Exception(Refhost::heap(), "No schema."); }
  Kiln::SmartPtr<Kiln::Dom::INode> convertPMtoPT(Kiln::Property&, Kiln::PTLevel) override { return {}; }
  void convertPTtoPM(Kiln::SmartPtr<Kiln::Dom::INode>, Kiln::Property&) override { throw 42; }
};

TEST(BadInput, AFailureOfThePluginNamesTheConversion) {
  TicketWorld world;
  world.plugin = Refhost::make<FailingPlugin>(world.host);
  Refhost::PluginFailures failures("failing.so", world.trace.calls());
  EXPECT_EQ(failures.sentenceOf([&] { world.ticket(); }),
            "failing.so, convertPMtoPT: The plug-in made no PrintTicket.");
  EXPECT_EQ(failures.sentenceOf([&] { world.capabilities(); }), "failing.so, getSchema: No schema.");
  const auto before = world.model->values();
  EXPECT_EQ(failures.sentenceOf([&] { world.load(ticketAround("")); }),
            "failing.so, convertPTtoPM: An exception was thrown that is no std::exception.");
  EXPECT_EQ(world.model->values(), before);
}

TEST(BadInput, AFaultOfTheTicketIsNoFailureOfThePlugin) {
  TicketWorld world;
  Refhost::PluginFailures failures("failing.so", world.trace.calls());
  EXPECT_THAT(failures.sentenceOf([&] { world.load(spoilt(init("psk:PageWatermarkTextAngle", ""))); }),
              StartsWith("job.xml:9: "));
}

// A property tree in which one property cannot be written.
class ReadOnlyProperty final : public Kiln::Property {
 public:
  Kiln::String narrowValue() override { return {}; }
  Kiln::WString wideValue() override { return {}; }
  bool boolValue() override { return false; }
  bool equals(Kiln::WStringView) override { return false; }
  void setValue(Kiln::WStringView) override { throw Refhost::failure("This property is read-only."); }
  bool hasChild(Kiln::WStringView) override { return false; }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView) override { return {}; }
};

class TreeWithReadOnly final : public Kiln::Property {
 public:
  TreeWithReadOnly(Kiln::SmartPtr<Kiln::Property> whole, std::u16string name)
      : tree(std::move(whole)),
        readOnly(std::move(name)) {}
  Kiln::String narrowValue() override { return {}; }
  Kiln::WString wideValue() override { return {}; }
  bool boolValue() override { return false; }
  bool equals(Kiln::WStringView) override { return false; }
  void setValue(Kiln::WStringView) override {}
  bool hasChild(Kiln::WStringView name) override { return tree->hasChild(name); }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView name) override {
    if (name.view() == readOnly) return Refhost::make<ReadOnlyProperty>();
    return tree->child(name);
  }

 private:
  Kiln::SmartPtr<Kiln::Property> tree;
  std::u16string readOnly;
};

TEST(BadInput, APropertyThatCannotBeWrittenLeavesTheOthersAsTheyWere) {
  TicketWorld world;
  const auto before = world.model->values();
  TreeWithReadOnly tree(world.model, u"NegativeImage");
  const auto ticket = Refhost::readXml(spoilt(""), "ticket", Refhost::documentLimits);
  EXPECT_THROW(world.service.ticketToProperties(*world.plugin, ticket, tree), Kiln::Exception);
  EXPECT_EQ(world.model->values(), before);
}

TEST(BadInput, AnEmptyElementIsAcceptedAndNothingIsMade) {
  TicketWorld world;
  EXPECT_NO_THROW(world.service.propertiesToTicket(*world.plugin, {}, *world.model, Kiln::PTLevel::job));
}

TEST(BadInput, AnElementOfAnotherNameIsRefused) {
  TicketWorld world;
  const auto element = Refhost::make<Refhost::Node>(u"Ticket");
  EXPECT_THROW(world.service.propertiesToTicket(*world.plugin, element, *world.model, Kiln::PTLevel::job),
               Kiln::Exception);
  EXPECT_THROW(world.service.ticketToProperties(*world.plugin, {}, *world.model), Kiln::Exception);
}

TEST(BadInput, AValueThatTheTicketCannotCarryIsRefusedByItsName) {
  const std::string prefix = "No PrintTicket can be made: the property ";
  TicketWorld world;
  world.set(u"MirrorImage", u"Sideways");
  EXPECT_EQ(world.refusalToWrite(),
            prefix + "MirrorImage is \"Sideways\", for which psk:PageMirrorImage has no option.");
  world.set({{u"MirrorImage", u"None"}, {u"WatermarkTextAngle", u"045"}});
  EXPECT_EQ(world.refusalToWrite(), prefix + "WatermarkTextAngle is \"045\", which the ticket would change.");
  world.set({{u"WatermarkTextAngle", u"0"}, {u"WatermarkText", u"ab\x01"}});
  EXPECT_EQ(world.refusalToWrite(), prefix + "WatermarkText has U+0001 as its character 3, which XML cannot carry.");
}

TEST(BadInput, ARefusedTicketLeavesTheElementAsItWas) {
  TicketWorld world;
  world.set(u"MirrorImage", u"Sideways");
  const auto element = Refhost::make<Refhost::Node>(u"PrintTicket");
  EXPECT_THROW(world.service.propertiesToTicket(*world.plugin, element, *world.model, Kiln::PTLevel::job),
               Kiln::Exception);
  EXPECT_EQ(element->childCount(), 0);
  EXPECT_EQ(element->nameSpace, u"");
}

}  // namespace
