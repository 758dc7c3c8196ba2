// createPlugin of the built library.
#include "files/disk.h"
#include "host/library.h"
#include "host/reference_host.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

class CreatePlugin : public testing::Test {
 protected:
  Kiln::SmartPtr<Kiln::UIPlugin> create(std::string_view name) {
    return Kiln::SmartPtr<Kiln::UIPlugin>(
        library->createPlugin()(host, manager, Refhost::text(name), nullptr, library));
  }

  Kiln::SmartPtr<Refhost::Library> library = Refhost::make<Refhost::Library>(std::filesystem::path(PLUGIN_FILE));
  Testing::RecordingFace face;
  Refhost::Trace trace;
  Refhost::ChromeFolders chrome{RESOURCES_FOLDER};
  Refhost::StringTables strings{chrome, "en-US"};
  Refhost::FileWorld files{Files::realDisk(), trace, {}};
  Kiln::SmartPtr<Refhost::PropertyManager> manager = Refhost::make<Refhost::PropertyManager>(
      Refhost::make<Refhost::PropertyModel>(
          Refhost::readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", "standard"), trace),
      trace);
  Refhost::ReferenceHost host{{face, trace, chrome, strings, files, *manager->model}};
};

TEST_F(CreatePlugin, MakesThePluginNamedEffect) {
  const auto plugin = create("effect");
  ASSERT_TRUE(plugin);
  EXPECT_EQ(plugin->references(), 1);
  EXPECT_EQ(library->references(), 2) << "the plug-in holds one reference, and createPlugin has given its own back";
  EXPECT_EQ(plugin->propertyManager(), Kiln::PropertyManager(manager));
}

TEST_F(CreatePlugin, MakesNothingForAnyOtherName) {
  for (const char* name : {"Effect", "effect ", "effec", "", "effects", "EFFECT"}) EXPECT_FALSE(create(name)) << name;
}

TEST_F(CreatePlugin, GivesManagerAndLibraryBackForAnyOtherName) {
  const auto managers = manager->references();
  const auto libraries = library->references();
  create("other");
  EXPECT_EQ(manager->references(), managers);
  EXPECT_EQ(library->references(), libraries);
}

TEST_F(CreatePlugin, GivesNullWhenMemoryIsOut) {
  const Kiln::String name = Refhost::text("effect");
  Refhost::heap().failAfter(0);
  const auto* plugin = library->createPlugin()(host, manager, name, nullptr, library);
  Refhost::heap().failAfter(-1);
  EXPECT_EQ(plugin, nullptr);
}

TEST_F(CreatePlugin, ConnectsAndReadsNothingBeforeItIsAskedTo) {
  std::vector<Refhost::TraceEvent> events;
  trace.listen([&events](const auto& event) { events.push_back(event); });
  const auto plugin = create("effect");
  plugin->create();
  plugin->initialise();
  EXPECT_TRUE(events.empty());
}

TEST_F(CreatePlugin, GivesAllItsMemoryBackWhenItIsReleased) {
  const long before = Refhost::heap().blocks();
  create("effect");
  EXPECT_EQ(Refhost::heap().blocks(), before);
}

TEST_F(CreatePlugin, LetsTheHostsExceptionThrough) {
  const auto plugin = create("effect");
  manager->settings->set(u"UIMode", u"DocProp");
  Refhost::WidgetWorld widgets{trace, strings, nullptr, {}, {}};
  const Refhost::ChromeFolders nowhere("/nowhere");
  const Refhost::LayoutReader layouts(nowhere, {});
  const auto gui = Refhost::make<Refhost::Gui>(Refhost::GuiWorld{face, layouts, widgets}, trace);
  EXPECT_THROW(plugin->configureUI(gui), Kiln::Exception);
}

}  // namespace
