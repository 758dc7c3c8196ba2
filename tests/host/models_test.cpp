// Model descriptions: shipped ones and invalid ones.
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
  EXPECT_EQ(failureOfModel("<model name='m' extends='m' label='m'/>"),
            "m.xml:1: the models extend one another too often.");
  EXPECT_EQ(failureOfModel("<!DOCTYPE model [<!ENTITY a 'b'>]>\n<model name='m' label='&a;'/>"),
            "m.xml:1: a DOCTYPE is not allowed here.");
}

TEST(ModelDescriptions, ThatDoNotExistAreToldWithThoseThatDo) {
  const auto sentence = failureOf([] { Refhost::readModel(resources / "models", "nowhere"); });
  EXPECT_EQ(sentence.substr(0, 49), "There is no model nowhere: name one of standard, ");
  EXPECT_NE(sentence.find("kvt,"), sentence.npos) << sentence;
}

}  // namespace
