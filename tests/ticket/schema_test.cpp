// Schemas: another vocabulary altogether, and schemas that are wrong.
#include "tests/ticket/ticket_world.h"
#include "tests/ticket/validity.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

// A binder's settings: no word of the effect tab's.
const std::string binderSchema = R"(<s:ticketSchema xmlns:s="urn:kilnworks:ticket-schema:1"
    xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
    xmlns:q="urn:binder:q" xmlns:r="urn:binder:r">
  <s:feature name="psk:JobBindAllDocuments" property="Binding" scope="document" absent="no">
    <s:option name="psk:BindLeft" value="left">
      <s:scored name="psk:BindingGutter" parameter="psk:JobBindAllDocumentsGutter"/>
    </s:option>
    <s:option name="q:Spiral" value="spiral"/>
    <s:feature name="q:Cover" property="Cover">
      <s:option name="r:Card" value="card"/>
      <s:option name="psk:None" value=""/>
      <s:exact name="r:Cover" least="0" most="9"/>
      <s:feature name="q:Window" property="Window">
        <s:option name="q:Yes" value="yes"/>
        <s:option name="q:No" value="no"/>
        <s:exact name="r:Window" least="0" most="9"/>
      </s:feature>
    </s:feature>
  </s:feature>
  <s:parameter name="psk:JobBindAllDocumentsGutter" property="Gutter" type="integer" least="-5" most="5" unit="mm"
      beyond="wrapped">
    <s:exact name="q:Gutter" least="-1000" most="1000"/>
  </s:parameter>
  <s:parameter name="q:Title" property="Title" type="text" least="0" most="5"/>
  <s:parameter name="q:Missing" property="NotInTheModel" type="text" least="0" most="5"/>
  <s:feature name="q:Punch" property="Punch">
    <s:option name="q:Yes" value="yes"/>
    <s:option name="q:No" value="no"/>
  </s:feature>
  <s:feature name="r:Punched" property="Punch" aliasOf="q:Punch">
    <s:option name="r:Yes" value="yes"/>
    <s:option name="r:No" value="no"/>
  </s:feature>
</s:ticketSchema>)";

class Binder : public testing::Test {
 protected:
  Binder() {
    std::filesystem::create_directories(folder.path / "binder" / "content");
    Testing::writeFile(folder.path / "binder" / "content" / "schema.xml", binderSchema);
  }

  static Refhost::ModelDescription description() {
    Refhost::ModelDescription model;
    model.properties = {{u"Binding", u"no", {u"no", u"left", u"spiral"}, false},
                        {u"Cover", u"", {}, false},
                        {u"Window", u"no", {u"no", u"yes"}, false},
                        {u"Gutter", u"0", {}, false},
                        {u"Title", u"", {}, false},
                        {u"Punch", u"no", {u"no", u"yes"}, false}};
    return model;
  }
  Kiln::SmartPtr<Refhost::PropertyModel> newModel() const {
    return Refhost::make<Refhost::PropertyModel>(description(), world.trace);
  }

  std::string ticketOf(Refhost::PropertyModel& model) {
    const std::string bytes = world.service.document(*plugin, model, Kiln::PTLevel::job);
    EXPECT_EQ(Testing::faultsOf(bytes), std::vector<std::string>()) << bytes;
    return bytes;
  }

  Testing::TemporaryFolder folder;
  Testing::TicketHost world{folder.path, description()};
  Kiln::SmartPtr<Testing::PlainPlugin> plugin =
      Refhost::make<Testing::PlainPlugin>(world.host, u"chrome://binder/content/schema.xml");
};

TEST_F(Binder, EveryCombinationComesBack) {
  for (const char16_t* binding : {u"no", u"left", u"spiral"})
    for (const char16_t* cover : {u"", u"card"})
      for (const char16_t* window : {u"no", u"yes"})
        for (const char16_t* gutter : {u"0", u"5", u"-5", u"6", u"-17", u"1000"})
          for (const char16_t* title : {u"", u"Essay"}) {
            const auto model = newModel();
            model->start(u"Binding", binding);
            model->start(u"Cover", cover);
            model->start(u"Window", window);
            model->start(u"Gutter", gutter);
            model->start(u"Title", title);
            model->start(u"Punch", window);
            const auto receiver = newModel();
            for (const auto& [name, value] : receiver->values()) receiver->start(name, u"?");
            world.service.load(*plugin, *receiver, ticketOf(*model), "ticket.xml");
            ASSERT_EQ(receiver->values(), model->values());
          }
}

TEST_F(Binder, TicketsHaveItsNamesAndNoOthers) {
  const auto model = newModel();
  model->start(u"Binding", u"left");
  model->start(u"Gutter", u"6");
  const std::string ticket = ticketOf(*model);
  EXPECT_THAT(ticket, HasSubstr("xmlns:q=\"urn:binder:q\" xmlns:r=\"urn:binder:r\""));
  EXPECT_THAT(ticket,
              HasSubstr("<psf:Feature name=\"psk:JobBindAllDocuments\">\n    <psf:Option name=\"psk:BindLeft\">"));
  EXPECT_THAT(ticket, HasSubstr("<psf:ParameterInit name=\"psk:JobBindAllDocumentsGutter\">\n"
                                "    <psf:Value xsi:type=\"xsd:integer\">-5</psf:Value>"));
  EXPECT_THAT(ticket, Not(HasSubstr("Watermark")));
  EXPECT_THAT(ticket, Not(HasSubstr("q:Missing")));
}

TEST_F(Binder, CapabilitiesHaveItsRanges) {
  const auto model = newModel();
  const std::string bytes = world.service.capabilities(*plugin, *model);
  EXPECT_EQ(Testing::faultsOf(bytes), std::vector<std::string>()) << bytes;
  EXPECT_THAT(bytes, HasSubstr("<psf:Feature name=\"q:Window\">"));
  EXPECT_THAT(bytes, HasSubstr("<psf:Value xsi:type=\"xsd:string\">mm</psf:Value>"));
}

TEST_F(Binder, AParameterOfAPropertyThatTheModelLacksIsKeptAsForeign) {
  const auto model = newModel();
  const std::string kept = "  <psf:ParameterInit name=\"q:Missing\">\n"
                           "    <psf:Value xsi:type=\"xsd:string\">much too long</psf:Value>\n  </psf:ParameterInit>\n";
  world.service.load(*plugin, *model,
                     Testing::replaced(ticketOf(*model), "</psf:PrintTicket>", kept + "</psf:PrintTicket>"),
                     "ticket.xml");
  EXPECT_THAT(ticketOf(*model), HasSubstr(kept));
}

struct Broken {
  std::string from;
  std::string to;
  std::string sentence;  // behind the file's name
};

class BrokenSchema : public testing::TestWithParam<Broken> {};

TEST_P(BrokenSchema, IsRefusedWithItsLineAndName) {
  Testing::TemporaryFolder folder;
  std::filesystem::create_directories(folder.path / "binder" / "content");
  const auto file = folder.path / "binder" / "content" / "schema.xml";
  Testing::writeFile(file, Testing::replaced(binderSchema, GetParam().from, GetParam().to));
  const Refhost::ChromeFolders chrome{folder.path};
  Refhost::PluginCalls calls;
  const auto service = Refhost::makeTickets(chrome, calls);
  try {
    service->loadSchema(u"chrome://binder/content/schema.xml");
    FAIL() << "was read";
  } catch (const Kiln::Exception& refusal) {
    EXPECT_EQ(refusal.what(), file.string() + GetParam().sentence);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Each, BrokenSchema,
    testing::Values(
        Broken{"</s:option>\n    <s:option name=\"q:Spiral\"", "\n    <s:option name=\"q:Spiral\"",
               ":19: mismatched tag"},
        Broken{"urn:kilnworks:ticket-schema:1", "urn:other",
               ":1: a ticket schema begins with the element ticketSchema of the namespace "
               "urn:kilnworks:ticket-schema:1."},
        Broken{"xmlns:q=", "xmlns:psf=\"urn:binder:f\" xmlns:q=", ":1: the prefix psf is kept for the Print Schema."},
        Broken{"<s:option name=\"q:Spiral\" value=\"spiral\"/>", "<s:choice/>",
               ":8: the element choice does not belong into the element feature."},
        Broken{"value=\"spiral\"", "", ":8: the element option lacks the attribute value."},
        Broken{"value=\"spiral\"", "value=\"spiral\" colour=\"red\"",
               ":8: the element option has no attribute colour."},
        Broken{"value=\"spiral\"", "value=\"left\"", ":8: the name or the value of the option Spiral stands twice."},
        Broken{"\"q:Spiral\"", "\"Spiral\"", ":8: the name \"Spiral\" has no prefix that the root element declares."},
        Broken{"\"q:Spiral\"", "\"z:Spiral\"",
               ":8: the name \"z:Spiral\" has no prefix that the root element declares."},
        Broken{"scope=\"document\"", "scope=\"sheet\"", ":4: scope is \"sheet\", not page, document or job."},
        Broken{"absent=\"no\"", "absent=\"left\"", ":4: absent is the value of an option."},
        Broken{"parameter=\"psk:JobBindAllDocumentsGutter\"", "parameter=\"q:Nothing\"",
               ":6: there is no parameter Nothing."},
        Broken{"<s:exact name=\"r:Cover\" least=\"0\" most=\"9\"/>", "", ":4: q:Cover needs an exact."},
        Broken{"type=\"text\"", "type=\"number\"", ":24: type is \"number\", not text, integer or colour."},
        Broken{"least=\"-5\"", "least=\"low\"", ":20: least is \"low\", which is no whole number."},
        Broken{"least=\"-5\"", "least=\"6\"", ":20: least is more than most."},
        Broken{"beyond=\"wrapped\"", "beyond=\"lost\"", ":20: beyond is \"lost\", not refused, wrapped or clamped."},
        Broken{"<s:exact name=\"q:Gutter\" least=\"-1000\" most=\"1000\"/>", "",
               ":20: a parameter that changes values needs an exact that carries them."},
        Broken{"name=\"q:Gutter\"", "name=\"r:Cover\"", ":12: the name r:Cover stands twice."},
        Broken{"property=\"Title\"", "property=\"Gutter\"", ":24: the property Gutter stands twice."},
        Broken{"name=\"q:Title\"", "name=\"q:Gutter\"", ":24: the name q:Gutter stands twice."},
        Broken{" aliasOf=\"q:Punch\"", "", ":30: the property Punch stands twice."},
        Broken{"aliasOf=\"q:Punch\"", "aliasOf=\"q:Cover\"",
               ":30: aliasOf names no earlier feature of the same property that has options alone."},
        Broken{"property=\"Punch\" aliasOf=\"q:Punch\"", "property=\"Binding\" aliasOf=\"psk:JobBindAllDocuments\"",
               ":30: aliasOf names no earlier feature of the same property that has options alone."},
        Broken{"<s:option name=\"r:No\" value=\"no\"/>", "",
               ":30: an alias has the scope and the values of its feature, and nothing else."},
        Broken{"property=\"Window\"", "property=\"Window\" aliasOf=\"q:Punch\"",
               ":13: aliasOf stands in features of the root alone."}));

TEST(Schema, AnAddressThatNamesNoFileIsRefused) {
  Testing::TicketWorld world;
  EXPECT_THROW(world.service.loadSchema(u"chrome://effect/content/none.xml"), Kiln::Exception);
  EXPECT_THROW(world.service.loadSchema(u"schema_effect.xml"), Kiln::Exception);
  EXPECT_THROW(world.service.loadSchema(u"chrome://effect/../../secret.xml"), Kiln::Exception);
}

TEST(Schema, ADocumentIsGivenWholeForLookingAt) {
  Testing::TicketWorld world;
  EXPECT_THAT(world.service.schemaDocument(*world.plugin),
              HasSubstr("<feature name=\"psk:PageMirrorImage\" property=\"MirrorImage\">"));
}

TEST(Schema, TheCodeThatConvertsHasNoWordOfTheEffectsVocabulary) {
  for (const auto& entry :
       std::filesystem::directory_iterator(std::filesystem::path(SOURCE_FOLDER) / "host" / "ticket")) {
    const std::string code = Files::realDisk().read(entry.path(), 1 << 20);
    for (const char* word : {"Watermark", "Overlay", "Mirror", "NegativeImage", "Rotate180", "ePTKW", "effect:1"})
      EXPECT_THAT(code, Not(HasSubstr(word))) << entry.path();
  }
}

}  // namespace
