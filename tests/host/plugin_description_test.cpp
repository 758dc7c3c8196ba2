// Descriptions of plug-ins: reading one, finding that of a library, and what the host does by it.
#include "host/plugin_description.h"
#include "host/preferences.h"
#include "tests/support/failure_of.h"
#include "tests/support/host_world.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

#include <regex>

namespace {

using Refhost::Need;
using Testing::failureOf;
using testing::HasSubstr;
using Testing::writeFile;

class PluginDescriptions : public testing::Test {
 protected:
  // Writes a package's description.
  void describe(const std::string& package, const std::string& xml) {
    writeFile(folder.path / package / "content" / "plugin.xml", xml);
  }
  void describeLibrary(const std::string& package, const std::string& library) {
    describe(package, "<plugin name='" + package + "' contract='2.0' library='" + library + "'/>");
  }

  // The name of the plug-in in a library.
  std::string nameIn(const std::string& library) const {
    const auto plugin = Refhost::describePlugin(chrome, library);
    return plugin ? plugin->name : "none";
  }

  std::string failure() const {
    return std::regex_replace(failureOf([this] { Refhost::describePlugin(chrome, "any.so"); }),
                              std::regex("^.*plugin\\.xml"), "plugin.xml");
  }

  Testing::TemporaryFolder folder;
  Refhost::ChromeFolders chrome{folder.path};
};

TEST_F(PluginDescriptions, HaveEachNameWithItsNeed) {
  describe("p", "<plugin name='staple' contract='2.13' library='Staples'><property name='Staple' need='mandatory'/>"
                "<property name='Place' need='optional'/><widget name='chk_staple' need='optional'/>"
                "<setting name='key' need='optional'/><customisation name='key' need='optional'/></plugin>");
  const auto plugin = Refhost::describePlugin(chrome, "Staples.so");
  ASSERT_TRUE(plugin);
  EXPECT_EQ(plugin->name, "staple");
  EXPECT_EQ(plugin->contract, "2.13");
  EXPECT_EQ(plugin->library, u"Staples");
  ASSERT_EQ(plugin->properties.size(), 2U);
  EXPECT_EQ(plugin->properties[0].name, u"Staple");
  EXPECT_EQ(plugin->properties[0].need, Need::mandatory);
  EXPECT_EQ(plugin->properties[1].need, Need::optional);
  ASSERT_EQ(plugin->widgets.size() + plugin->settings.size() + plugin->customisation.size(), 3U);
  EXPECT_EQ(plugin->widgets[0].name, u"chk_staple");
  EXPECT_EQ(plugin->settings[0].name, u"key");
  EXPECT_TRUE(plugin->knowsProperty(u"Place"));
  EXPECT_FALSE(plugin->knowsProperty(u"chk_staple"));
}

TEST_F(PluginDescriptions, AreFoundByTheLibraryWithAnyEnding) {
  describeLibrary("one", "Staples");
  describeLibrary("other", "Staples2");
  for (const char* library : {"Staples.so", "/a/libStaples.so.1", "staples.DLL", "Staples", "libStaples.dylib"})
    EXPECT_EQ(nameIn(library), "one") << library;
  EXPECT_EQ(nameIn("libStaples2.so"), "other");
  for (const char* library : {"Staple.so", "Staples3.so", "xStaples.so", "lib.so", "Staples/other.so"})
    EXPECT_EQ(nameIn(library), "none") << library;
}

TEST_F(PluginDescriptions, OfALibraryWhoseOwnNameBeginsWithLibAreFound) {
  describeLibrary("one", "Library");
  EXPECT_EQ(nameIn("Library.so"), "one");
  EXPECT_EQ(nameIn("libLibrary.so"), "one");
}

TEST_F(PluginDescriptions, OfOneLibraryInTwoPackagesAreRefused) {
  describeLibrary("a", "Staples");
  describeLibrary("b", "staples");
  EXPECT_THAT(failureOf([this] { nameIn("Staples.so"); }),
              testing::EndsWith("plugin.xml describes the library staples, which another package describes already."));
}

TEST_F(PluginDescriptions, FailWithFileAndLine) {
  const auto failureOfXml = [this](const std::string& xml) {
    describe("p", xml);
    return failure();
  };
  const std::string start = "<plugin name='p' contract='2.0' library='P'>\n";
  EXPECT_EQ(failureOfXml(start + "<property"), "plugin.xml:2: unclosed token");
  EXPECT_EQ(failureOfXml("<plug/>"), "plugin.xml:1: the root is a <plug>, not a <plugin>.");
  EXPECT_EQ(failureOfXml("<plugin name='p' library='P'/>"), "plugin.xml:1: <plugin> has no contract.");
  EXPECT_EQ(failureOfXml("<plugin name='' contract='2.0' library='P'/>"), "plugin.xml:1: name or library is empty.");
  for (const char* version : {"", "2", "2.", ".0", "2.0.0", "two", "2.0 "})
    EXPECT_EQ(failureOfXml("<plugin name='p' contract='" + std::string(version) + "' library='P'/>"),
              "plugin.xml:1: contract is no version, such as \"2.0\".");
  EXPECT_EQ(failureOfXml(start + "<colour name='a' need='optional'/></plugin>"),
            "plugin.xml:2: <colour> is not known here.");
  EXPECT_EQ(failureOfXml(start + "<widget name='a' need='some'/></plugin>"),
            "plugin.xml:2: need is neither \"mandatory\" nor \"optional\".");
  EXPECT_EQ(failureOfXml(start + "<widget name='a' need='optional' kind='b'/></plugin>"),
            "plugin.xml:2: <widget> takes no attribute kind.");
  EXPECT_EQ(failureOfXml(start + "<setting name='a' need='optional'/><widget name='a' need='optional'/>\n"
                                 "<widget name='a' need='mandatory'/></plugin>"),
            "plugin.xml:3: the widget a stands twice.");
}

// The resources of this build, with a description of the plug-in that is changed.
class ChangedDescription : public testing::Test {
 protected:
  ChangedDescription() {
    Testing::copyResources(folder.path / "resources");
    options.resources = folder.path / "resources";
  }

  void replace(const std::string& from, const std::string& to) const {
    std::string xml = Testing::bytesOf(file);
    ASSERT_NE(xml.find(from), xml.npos);
    writeFile(file, xml.replace(xml.find(from), from.size(), to));
  }

  std::string failureOfOpening() const {
    Testing::RecordingFace face;
    return failureOf([&] { Refhost::Preferences(options, face).open(); });
  }

  const Testing::TemporaryFolder folder;
  const std::filesystem::path file = folder.path / "resources" / "effect" / "content" / "plugin.xml";
  Refhost::Options options = Testing::builtOptions();
};

TEST_F(ChangedDescription, NamesThePluginToCreate) {
  replace("name=\"effect\"", "name=\"stamp\"");
  EXPECT_THAT(failureOfOpening(), testing::EndsWith(" has no plug-in named stamp."));
}

TEST_F(ChangedDescription, ThatIsDamagedEndsTheOpening) {
  replace("<property ", "<propertie ");
  EXPECT_EQ(failureOfOpening(), file.string() + ":5: <propertie> is not known here.");
}

TEST_F(ChangedDescription, NamesWhatTheModelLacksBeforeThePluginIsCreated) {
  replace("</plugin>", "<property name=\"Staple\" need=\"mandatory\"/><property name=\"Fold\" need=\"mandatory\"/>"
                       "<property name=\"Punch\" need=\"optional\"/></plugin>");
  EXPECT_EQ(failureOfOpening(), "The model standard lacks properties that the plug-in effect needs: Staple, Fold.");
}

TEST_F(ChangedDescription, ThatIsMissingLeavesThePluginItsUsualName) {
  std::filesystem::remove(file);
  Testing::World world(options);
  EXPECT_NE(world.preferences.gui()->find(u"chk_EffRot180Deg"), nullptr);
}

TEST_F(ChangedDescription, IsWhatTheTicketSchemaMayName) {
  replace("<property name=\"Nin1\" need=\"optional\"/>", "");
  Testing::World world(options);
  EXPECT_THAT(failureOf([&world] { world.preferences.ticket(); }),
              testing::AllOf(HasSubstr("schema_effect.xml:"), HasSubstr(": the plug-in knows no property Nin1.")));
}

// Models differ, and one need not have all that others have.
TEST_F(ChangedDescription, LetsTheTicketSchemaNameWhatOnlyTheModelLacks) {
  writeFile(folder.path / "resources" / "models" / "standard.xml",
            std::regex_replace(Testing::bytesOf(folder.path / "resources" / "models" / "standard.xml"),
                               std::regex("<property name=\"WatermarkTextScale\"[^>]*>"), ""));
  Testing::World world(options);
  EXPECT_EQ(world.preferences.ticket().find("WatermarkTextScale"), std::string::npos);
}

}  // namespace
