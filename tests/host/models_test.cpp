// Model descriptions: shipped ones, those that extend others, and invalid ones.
#include "formats/text.h"
#include "host/model/description.h"
#include "tests/support/failure_of.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

using Testing::failureOf;
using Testing::TemporaryFolder;
using Testing::writeFile;

const std::filesystem::path resources = RESOURCES_FOLDER;

std::string failureOfModel(const std::string& xml) {
  const TemporaryFolder folder;
  writeFile(folder.path / "m.xml", xml);
  const auto sentence = failureOf([&] { Refhost::readModel(folder.path, (folder.path / "m.xml").string()); });
  return std::regex_replace(sentence, std::regex("^.*m\\.xml"), "m.xml");
}

TEST(ModelDescriptions, ThatShipAreReadByTheirNameInAnyCase) {
  const auto names = Refhost::shippedModels(resources / "models");
  EXPECT_EQ(names.front(), "standard");
  EXPECT_EQ(names.size(), 11U);
  for (const std::string& name : names)
    EXPECT_FALSE(Refhost::readModel(resources / "models", name).rules.empty() && name != "standard") << name;
  EXPECT_EQ(Refhost::readModel(resources / "models", "KVT").name, u"kvt");
}

TEST(ModelDescriptions, InheritPropertiesAndChangeValues) {
  const auto standard = Refhost::readModel(resources / "models", "standard");
  const auto kvt = Refhost::readModel(resources / "models", "kvt");
  EXPECT_EQ(kvt.properties.size(), standard.properties.size());
  EXPECT_EQ(kvt.properties.front().name, u"ModelNumber");
  EXPECT_EQ(kvt.properties.front().defaultValue, u"KVT");
}

TEST(ModelDescriptions, FailWithFileAndLine) {
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property"), "m.xml:2: unclosed token");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<rule unavailable='Paper' option='A3'/></model>"),
            "m.xml:2: there is no property Paper.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n\n<value of='Paper' is='A3'/></model>"),
            "m.xml:3: there is no property Paper.");
  EXPECT_EQ(failureOfModel("<printer/>"), "m.xml:1: the root is a <printer>, not a <model>.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<colour/></model>"), "m.xml:2: <colour> is not known here.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property name='P'/></model>"),
            "m.xml:2: <property> has no value.");
  EXPECT_EQ(
      failureOfModel("<model name='m' label='m'><property name='P' value=''/>\n<property name='P' value=''/></model>"),
      "m.xml:2: the property P stands twice.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property name='P' value='' feature='F'/></model>"),
            "m.xml:2: there is no property F.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value='a'><option value='a'/></property>\n"
                           "<rule unavailable='P' option='b'/></model>"),
            "m.xml:2: P has no option b.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property name='P' value='' kind='x'/></model>"),
            "m.xml:2: <property> takes no attribute kind.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<option value='a'/></model>"),
            "m.xml:2: <option> does not belong into <model>.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property name='P' value=''>text</property></model>"),
            "m.xml:2: <property> has a text, which is not known here.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'>\n<property name='P' value='' context='yes'/></model>"),
            "m.xml:2: context is neither \"true\" nor \"false\".");
  EXPECT_EQ(
      failureOfModel("<model name='m' label='m'>\n<property name='P' value='b'><option value='a'/></property></model>"),
      "m.xml:2: P has no option b.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value='a'>\n<option value='a'/>\n"
                           "<option value='a'/></property></model>"),
            "m.xml:3: the option a stands twice.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value='a'><option value='a'/></property>\n"
                           "<value of='P' is='b'/></model>"),
            "m.xml:2: P has no option b.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value=''/>\n<value of='P' is='b'/></model>"),
            "m.xml:2: the value of P stands twice.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value=''/>\n"
                           "<rule unavailable='P' option='b'/></model>"),
            "m.xml:2: P has no option b.");
  EXPECT_EQ(failureOfModel("<model name='m' label='m'><property name='P' value='a'><option value='a'/></property>\n"
                           "<rule unavailable='P' option='a'>\n<when property='P' is='b'/></rule></model>"),
            "m.xml:3: P has no option b.");
  EXPECT_EQ(failureOfModel("<model xmlns='urn:other' name='m' label='m'/>"),
            "m.xml:1: <model> is not in the namespace \"\".");
  EXPECT_EQ(failureOfModel("<!DOCTYPE model [<!ENTITY a 'b'>]>\n<model name='m' label='&a;'/>"),
            "m.xml:1: a DOCTYPE is not allowed here.");
}

// Two files beside each other, of which the first is read; no models ship.
Refhost::ModelDescription extended(const std::string& model, const std::string& base) {
  const TemporaryFolder folder;
  writeFile(folder.path / "own" / "m.xml", model);
  writeFile(folder.path / "own" / "base.xml", base);
  return Refhost::readModel(folder.path / "none", (folder.path / "own" / "m.xml").string());
}

std::string failureOfExtended(const std::string& model, const std::string& base) {
  return std::regex_replace(failureOf([&] { extended(model, base); }), std::regex("^.*own."), "");
}

std::vector<std::string> shownRules(const Refhost::ModelDescription& model) {
  std::vector<std::string> lines;
  for (const auto& rule : model.rules) {
    lines.push_back(Formats::toUtf8(rule.property + u" " + rule.option));
    for (const auto& [property, value] : rule.conditions)
      lines.back() += Formats::toUtf8(u" " + property + u"=" + value);
  }
  return lines;
}

const std::string baseModel = R"(<model name='base' label='Base'>
  <property name='A' value='1'><option value='1'/><option value='2'/></property>
  <property name='B' value='1'><option value='1'/><option value='2'/></property>
  <rule unavailable='A' option='2'><when property='B' is='1'/></rule>
  <rule unavailable='A' option='2'><when property='B' is='2'/></rule>
  <rule unavailable='B' option='2'><when property='A' is='2'/></rule>
</model>)";

TEST(ModelDescriptions, ExtendAShippedOneFromAnyFolderAndInheritItsLabel) {
  const TemporaryFolder folder;
  writeFile(folder.path / "mine.xml", "<model extends='KVT'/>");
  const auto mine = Refhost::readModel(resources / "models", (folder.path / "mine.xml").string());
  const auto kvt = Refhost::readModel(resources / "models", "kvt");
  EXPECT_EQ(mine.name, u"mine");
  EXPECT_EQ(mine.label, kvt.label);
  EXPECT_EQ(mine.properties.size(), kvt.properties.size());
  EXPECT_EQ(shownRules(mine), shownRules(kvt));
}

TEST(ModelDescriptions, OverrideAnInheritedPropertyInItsPlaceTogetherWithItsRules) {
  const auto model = extended("<model extends='base'><property name='A' value='3' context='true'><option value='2'/>"
                              "<option value='3'/></property><property name='C' value=''/></model>",
                              baseModel);
  ASSERT_EQ(model.properties.size(), 3U);
  EXPECT_EQ(model.properties[0].name, u"A");
  EXPECT_EQ(model.properties[0].defaultValue, u"3");
  EXPECT_TRUE(model.properties[0].isContext);
  EXPECT_EQ(model.properties[0].options, (std::vector<std::u16string>{u"2", u"3"}));
  EXPECT_EQ(model.properties[2].name, u"C");
  EXPECT_EQ(shownRules(model), std::vector<std::string>{"B 2 A=2"});
}

TEST(ModelDescriptions, OverrideTheInheritedRulesAboutAnOption) {
  const auto model =
      extended("<model extends='base'><rule unavailable='A' option='2'><when property='A' is='1'/></rule>"
               "<rule unavailable='A' option='2'/></model>",
               baseModel);
  EXPECT_EQ(shownRules(model), (std::vector<std::string>{"B 2 A=2", "A 2 A=1", "A 2"}));
}

TEST(ModelDescriptions, DoNotOverrideAwayWhatAnInheritedRuleNeeds) {
  EXPECT_EQ(
      failureOfExtended("<model extends='base'>\n<property name='A' value='1'><option value='1'/></property></model>",
                        baseModel),
      "m.xml:2: a rule of B needs the option 2 of A.");
}

TEST(ModelDescriptions, DoNotExtendThemselvesNorWhatThereIsNot) {
  EXPECT_EQ(failureOfExtended("<model extends='m'/>", ""), "m.xml:1: the model extends itself.");
  EXPECT_EQ(failureOfExtended("<model extends='base'/>", "<model\nextends='m.xml'/>"),
            "base.xml:1: the model extends m.xml, which extends it.");
  EXPECT_EQ(failureOfExtended("<model extends='nothing'/>", ""),
            "m.xml:1: there is no model nothing: name one of , or a file.");
}

TEST(ModelDescriptions, OfTheFirstFolderOfSeveralCount) {
  const TemporaryFolder folder;
  writeFile(folder.path / "kvt.xml", "<model extends='standard' label='Mine'/>");
  writeFile(folder.path / "new.xml", "<model extends='kvt'/>");
  const Files::LayeredFolder models({folder.path, resources / "models"});
  EXPECT_EQ(Refhost::readModel(models, "new").label, u"Mine");
  EXPECT_EQ(Refhost::shippedModels(models).size(), 12U);
}

TEST(ModelDescriptions, ThatDoNotExistAreToldWithThoseThatDo) {
  const auto sentence = failureOf([] { Refhost::readModel(resources / "models", "nowhere"); });
  EXPECT_EQ(sentence.substr(0, 49), "There is no model nowhere: name one of standard, ");
  EXPECT_NE(sentence.find("kvt,"), sentence.npos) << sentence;
}

}  // namespace
