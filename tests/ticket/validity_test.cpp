// The checker itself: each rule can fail.
#include "tests/ticket/ticket_world.h"
#include "tests/ticket/validity.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using Testing::faultsOf;
using testing::HasSubstr;
using testing::IsEmpty;
using Testing::replaced;

const std::string valid = Testing::ticketAround(
    R"(<psf:Feature name="psk:PageWatermark"><psf:Option name="psk:Text">
<psf:ScoredProperty name="psk:Angle"><psf:ParameterRef name="psk:PageWatermarkTextAngle"/></psf:ScoredProperty>
</psf:Option></psf:Feature>
<psf:ParameterInit name="psk:PageWatermarkTextAngle">
<psf:Value xsi:type="xsd:integer">45</psf:Value></psf:ParameterInit>)");

struct Broken {
  std::string from;
  std::string to;
  std::string fault;
};

class Validity : public testing::TestWithParam<Broken> {};

TEST(Validity, AValidTicketHasNoFault) { EXPECT_THAT(faultsOf(valid), IsEmpty()); }

TEST_P(Validity, ABrokenTicketHasItsFault) {
  EXPECT_THAT(faultsOf(replaced(valid, GetParam().from, GetParam().to)),
              testing::Contains(HasSubstr(GetParam().fault)));
}

INSTANTIATE_TEST_SUITE_P(
    EachRule, Validity,
    testing::Values(
        Broken{"version=\"1\"", "version=\"2\"", "no version 1"},
        Broken{"printschemaframework", "other", "neither PrintTicket nor PrintCapabilities"},
        Broken{"</psf:Option>", "text</psf:Option>", "has text"},
        Broken{"</psf:Option>", "<psf:Option/></psf:Option>", "does not belong into Option"},
        Broken{"</psf:Option>", "<kw:Extra/></psf:Option>", "does not belong into Option"},
        Broken{"</psf:Feature>", "<psf:Option name=\"psk:None\"/></psf:Feature>", "more than one Option"},
        Broken{"</psf:Feature>", "</psf:Feature><psf:Feature name=\"psk:PageWatermark\"><psf:Option/></psf:Feature>",
               "stands twice"},
        Broken{"name=\"psk:Text\"", "name=\"psk:Text\" constrained=\"psk:None\"", "attribute constrained"},
        Broken{"\"psk:Angle\"", "\"Angle\"", "no name with a declared prefix"},
        Broken{"\"psk:Angle\"", "\"none:Angle\"", "no name with a declared prefix"},
        Broken{"<psf:ParameterRef name=\"psk:PageWatermarkTextAngle\"/>", "", "not one Value or ParameterRef"},
        Broken{"ParameterInit name=\"psk:PageWatermarkTextAngle\"", "ParameterInit name=\"psk:Other\"",
               "refers to a parameter that is not there"},
        Broken{"xsi:type=\"xsd:integer\"", "", "no type"}, Broken{"xsd:integer", "psk:integer", "unknown type"},
        Broken{">45<", ">4 5<", "no integer"}, Broken{"xsd:integer\">45", "xsd:QName\">45", "no QName"}));

TEST(Validity, AParameterDefinitionNeedsAllItsProperties) {
  const std::string definition =
      replaced(replaced(Testing::ticketAround("<psf:ParameterDef name=\"kw:Angle\"><psf:Property name=\"psf:DataType\">"
                                              "<psf:Value xsi:type=\"xsd:QName\">xsd:integer</psf:Value></psf:Property>"
                                              "</psf:ParameterDef>"),
                        "<psf:PrintTicket", "<psf:PrintCapabilities"),
               "</psf:PrintTicket", "</psf:PrintCapabilities");
  EXPECT_THAT(faultsOf(definition),
              ElementsAre(HasSubstr("lacks DefaultValue"), HasSubstr("lacks Multiple"), HasSubstr("lacks Mandatory"),
                          HasSubstr("lacks UnitType"), HasSubstr("lacks MinValue"), HasSubstr("lacks MaxValue")));
}

}  // namespace
