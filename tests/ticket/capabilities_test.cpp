// PrintCapabilities of the shipped models.
#include "tests/ticket/ticket_world.h"
#include "tests/ticket/validity.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using Testing::TicketWorld;

TEST(Capabilities, AreValidForEveryShippedModel) {
  for (const std::string& name : Refhost::shippedModels(std::filesystem::path(RESOURCES_FOLDER) / "models"))
    EXPECT_THAT(TicketWorld(name).capabilities(), HasSubstr("<psf:PrintCapabilities ")) << name;
}

TEST(Capabilities, AFeatureHasAllItsOptions) {
  TicketWorld world;
  EXPECT_THAT(world.capabilities(),
              HasSubstr("  <psf:Feature name=\"psk:PageMirrorImage\">\n"
                        "    <psf:Property name=\"psf:SelectionType\">\n"
                        "      <psf:Value xsi:type=\"xsd:QName\">psk:PickOne</psf:Value>\n    </psf:Property>\n"
                        "    <psf:Option name=\"psk:MirrorImageWidth\" constrained=\"psk:None\"/>\n"
                        "    <psf:Option name=\"psk:None\" constrained=\"psk:None\"/>\n  </psf:Feature>\n"));
}

TEST(Capabilities, AnOptionThatCannotBeChosenNowIsConstrained) {
  TicketWorld world;
  world.model->setAvailable(u"MirrorImage", u"MirrorImage", false);
  EXPECT_THAT(world.capabilities(),
              HasSubstr("<psf:Option name=\"psk:MirrorImageWidth\" constrained=\"psk:PrintTicketSettings\"/>"));
  world.model->setAvailable(u"MirrorImage", u"MirrorImage", true);
  EXPECT_THAT(world.capabilities(), HasSubstr("<psf:Option name=\"psk:MirrorImageWidth\" constrained=\"psk:None\"/>"));
}

TEST(Capabilities, WhatAFactOfThePrinterForbidsIsConstrainedByTheDevice) {
  Refhost::ModelDescription description;
  description.properties = {{u"Kind", u"plain", {}, true},
                            {u"Paper", u"A4", {u"A4", u"A3"}, false},
                            {u"MirrorImage", u"None", {u"None", u"MirrorImage"}, false},
                            {u"NegativeImage", u"None", {u"None", u"Negative"}, false}};
  description.rules = {{u"MirrorImage", u"MirrorImage", {{u"Kind", u"plain"}}},
                       {u"NegativeImage", u"Negative", {{u"Kind", u"plain"}, {u"Paper", u"A4"}}}};
  TicketWorld world;
  const auto model = Refhost::make<Refhost::PropertyModel>(description, world.trace);
  model->submit({{u"Paper", u"A4"}});
  const std::string bytes = world.service.capabilities(*world.plugin, *model);
  EXPECT_THAT(bytes, HasSubstr("\"psk:MirrorImageWidth\" constrained=\"psk:DeviceSettings\""));
  EXPECT_THAT(bytes, HasSubstr("\"psk:Negative\" constrained=\"psk:PrintTicketSettings\""));
}

TEST(Capabilities, WhatTheModelDoesNotHaveIsLeftOut) {
  Refhost::ModelDescription description;
  description.properties = {{u"Watermark", u"None", {u"None"}, false},
                            {u"MirrorImage", u"None", {u"None"}, false},
                            {u"WatermarkTextAngle", u"360", {}, false}};
  TicketWorld world;
  const auto model = Refhost::make<Refhost::PropertyModel>(description, world.trace);
  const std::string bytes = world.service.capabilities(*world.plugin, *model);
  EXPECT_EQ(Testing::faultsOf(bytes), std::vector<std::string>()) << bytes;
  EXPECT_THAT(bytes, Not(HasSubstr("psk:PageNegativeImage")));
  EXPECT_THAT(bytes, Not(HasSubstr("psk:MirrorImageWidth")));
  EXPECT_THAT(bytes, Not(HasSubstr("name=\"psk:PageWatermark\"")));
  EXPECT_THAT(bytes, HasSubstr("psk:PageWatermarkTextAngle"));
}

TEST(Capabilities, AParameterHasItsTypeRangeUnitAndDefault) {
  TicketWorld world;
  const auto property = [](const std::string& name, const std::string& type, const std::string& value) {
    return "    <psf:Property name=\"psf:" + name + "\">\n      <psf:Value xsi:type=\"xsd:" + type + "\">" + value +
           "</psf:Value>\n    </psf:Property>\n";
  };
  EXPECT_THAT(world.capabilities(),
              HasSubstr("  <psf:ParameterDef name=\"psk:PageWatermarkTextAngle\">\n" +
                        property("DataType", "QName", "xsd:integer") + property("DefaultValue", "integer", "0") +
                        property("MinValue", "integer", "0") + property("MaxValue", "integer", "359") +
                        property("Multiple", "integer", "1") + property("Mandatory", "QName", "psk:Conditional") +
                        property("UnitType", "string", "degrees") + "  </psf:ParameterDef>\n"));
  EXPECT_THAT(world.capabilities(),
              HasSubstr("  <psf:ParameterDef name=\"psk:PageWatermarkTextText\">\n" +
                        property("DataType", "QName", "xsd:string") + property("DefaultValue", "string", " ") +
                        property("MinLength", "integer", "1") + property("MaxLength", "integer", "1000000")));
}

}  // namespace
