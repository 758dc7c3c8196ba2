// The plug-in's PrintTicket conversion: multiple overlays are written as the plain option.
#include "host/documents/documents.h"
#include "host/documents/node.h"
#include "plugin_object.h"
#include "tests/support/host_around.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Testing::World;

constexpr auto manyFiles = u"C:\\overlays\\01234.opa;All$C:\\overlays\\04321.opa;2-3$";

void select(World& world, std::u16string overlay, std::u16string source) {
  world.preferences.set(u"OverlayImage", overlay);
  world.preferences.set(u"OverlaySourceFileName", source);
}

// The overlay option of a new run after reading a ticket.
std::u16string afterReading(const std::string& ticket) {
  World reader;
  reader.preferences.loadTicket(ticket, "ticket.xml");
  return reader.value(u"OverlayImage");
}

TEST(PrintTicket, CarriesMultipleOverlaysAsThePlainOption) {
  World multiple;
  select(multiple, u"MultipleOverlayImage", manyFiles);
  World single;
  select(single, u"OverlayImage", manyFiles);
  EXPECT_EQ(multiple.preferences.ticket(), single.preferences.ticket());
}

TEST(PrintTicket, LeavesEveryPropertyAsItWas) {
  World world;
  select(world, u"MultipleOverlayImage", manyFiles);
  const auto before = world.preferences.model().values();
  world.preferences.ticket();
  EXPECT_EQ(world.preferences.model().values(), before);
}

TEST(PrintTicket, LeavesTheOverlayAsItWasWhenTheConversionFails) {
  World world;
  select(world, u"MultipleOverlayImage", manyFiles);
  world.preferences.set(u"WatermarkTextTransparency", u"no number");
  EXPECT_THROW(world.preferences.ticket(), std::runtime_error);
  EXPECT_EQ(world.value(u"OverlayImage"), u"MultipleOverlayImage");
}

TEST(PrintTicket, TellsMultipleOverlaysByTheirList) {
  World world;
  select(world, u"MultipleOverlayImage", manyFiles);
  EXPECT_EQ(afterReading(world.preferences.ticket()), u"MultipleOverlayImage");
  select(world, u"OverlayImage", u"C:\\overlays\\01234.opa");
  EXPECT_EQ(afterReading(world.preferences.ticket()), u"OverlayImage");
  select(world, u"OverlayImage", u"$");
  EXPECT_EQ(afterReading(world.preferences.ticket()), u"MultipleOverlayImage");
}

TEST(PrintTicket, IgnoresTheListWithoutAnOverlay) {
  World world;
  select(world, u"None", manyFiles);
  EXPECT_EQ(afterReading(world.preferences.ticket()), u"None");
}

TEST(PrintTicket, BringsTheBoxesIntoLineAndCanBeUndone) {
  World writer;
  writer.preferences.set(u"NegativeImage", u"Negative");
  World reader;
  reader.preferences.loadTicket(writer.preferences.ticket(), "ticket.xml");
  EXPECT_TRUE(reader.box(u"ePTKWPageNegativeImage").isChecked());
  reader.preferences.undo();
  EXPECT_FALSE(reader.box(u"ePTKWPageNegativeImage").isChecked());
  EXPECT_FALSE(reader.preferences.canUndo());
}

TEST(PrintTicket, ThatIsNoneChangesNothing) {
  World world;
  world.preferences.set(u"NegativeImage", u"Negative");
  const auto before = world.preferences.model().values();
  for (const char* document : {"", "<ticket/>", "<a", "<!DOCTYPE a><a/>"})
    EXPECT_THROW(world.preferences.loadTicket(document, "ticket.xml"), std::runtime_error) << document;
  EXPECT_EQ(world.preferences.model().values(), before);
}

TEST(PrintTicket, HasNoElementWhenMemoryIsOut) {
  const auto documents = Refhost::makeDocuments();
  Refhost::heap().failAfter(0);
  const auto element = documents->createElement(u"PrintTicket", u"psk", u"psk");
  Refhost::heap().failAfter(-1);
  EXPECT_FALSE(element);
}

// A conversion that notes what it is given.
class NotedTickets final : public Kiln::Services::Tickets {
 public:
  Kiln::SmartPtr<Kiln::Dom::INode> loadSchema(Kiln::WStringView url) override {
    schema = url.view();
    return {};
  }
  void propertiesToTicket(Kiln::PTPlugin&, Kiln::SmartPtr<Kiln::Dom::INode> element, Kiln::Property& properties,
                          Kiln::PTLevel level) override {
    elements.push_back(element);
    levels.push_back(level);
    note(properties);
  }
  void ticketToProperties(Kiln::PTPlugin&, Kiln::SmartPtr<Kiln::Dom::INode> ticket,
                          Kiln::Property& properties) override {
    elements.push_back(ticket);
    note(properties);
  }

  std::u16string schema;
  std::vector<Kiln::SmartPtr<Kiln::Dom::INode>> elements;
  std::vector<Kiln::PTLevel> levels;
  std::vector<std::string> overlays;  // what the overlay option says at the time of each conversion

 private:
  // Takes no memory of the host's.
  void note(Kiln::Property& properties) {
    const auto overlay = properties.child(u"OverlayImage");
    const char* const stated = overlay && overlay->equals(u"OverlayImage") ? "one" : "several";
    overlays.emplace_back(overlay ? stated : "nothing");
  }
};

class NotingHost final : public Testing::HostAround {
 public:
  using HostAround::HostAround;
  Kiln::SmartPtr<Kiln::Services::Tickets> tickets() override { return noted; }

  const Kiln::SmartPtr<NotedTickets> noted = Refhost::make<NotedTickets>();
};

class Conversion : public testing::Test {
 protected:
  ~Conversion() override { object.plugin.reset(); }  // before its host

  Testing::PluginObject object;
  NotingHost host{object.world.host};
  Kiln::PTPlugin& plugin = object.make(host);
  NotedTickets& noted = *host.noted;
  Refhost::Settings properties;
};

TEST_F(Conversion, IsByTheSchemaOfTheTab) {
  plugin.getSchema();
  EXPECT_EQ(noted.schema, u"chrome://effect/content/schema_effect.xml");
}

TEST_F(Conversion, StartsWithAnElementOfTheKeywordsAndHandsTheLevelOn) {
  for (const Kiln::PTLevel level : {Kiln::PTLevel::page, Kiln::PTLevel::document, Kiln::PTLevel::job}) {
    const auto element = Kiln::smartCast<Refhost::Node>(plugin.convertPMtoPT(properties, level));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->localNameText(), u"PrintTicket");
    EXPECT_EQ(element->prefix, u"psk");
    EXPECT_EQ(element->nameSpace, u"psk");
    EXPECT_EQ(noted.elements.back().get(), element.get());
    EXPECT_EQ(noted.levels.back(), level);
  }
}

TEST_F(Conversion, RunsWithoutAnElementWhenMemoryIsOut) {
  properties.set(u"OverlayImage", u"MultipleOverlayImage");
  Refhost::heap().failAfter(0);
  const auto element = plugin.convertPMtoPT(properties, Kiln::PTLevel::job);
  Refhost::heap().failAfter(-1);
  EXPECT_FALSE(element);
  ASSERT_EQ(noted.elements.size(), 1U);
  EXPECT_FALSE(noted.elements[0]);
  EXPECT_EQ(properties.get(u"OverlayImage"), u"MultipleOverlayImage");
}

TEST_F(Conversion, SeesOneOverlayForSeveralOnTheWayOutAlone) {
  properties.set(u"OverlayImage", u"MultipleOverlayImage");
  properties.set(u"OverlaySourceFileName", u"a.opa;All$");
  const auto element = plugin.convertPMtoPT(properties, Kiln::PTLevel::job);
  EXPECT_EQ(properties.get(u"OverlayImage"), u"MultipleOverlayImage");
  plugin.convertPTtoPM(element, properties);
  EXPECT_EQ(noted.overlays, (std::vector<std::string>{"one", "several"}));
}

TEST_F(Conversion, LeavesPropertiesWithoutAnOverlayOptionAsTheyAre) {
  properties.set(u"OverlaySourceFileName", u"a.opa;All$");
  plugin.convertPTtoPM(plugin.convertPMtoPT(properties, Kiln::PTLevel::job), properties);
  EXPECT_EQ(noted.overlays, (std::vector<std::string>{"nothing", "nothing"}));
  EXPECT_FALSE(properties.hasChild(u"OverlayImage"));
}

TEST_F(Conversion, TakesAnOverlayWithoutASourceForOne) {
  properties.set(u"OverlayImage", u"OverlayImage");
  plugin.convertPTtoPM(plugin.convertPMtoPT(properties, Kiln::PTLevel::job), properties);
  EXPECT_EQ(properties.get(u"OverlayImage"), u"OverlayImage");
}

TEST(PrintTicket, IsMadeWithoutAGUIToo) {
  auto options = Testing::builtOptions();
  options.mode = Refhost::Mode::rootless;
  World world(options);
  EXPECT_NE(world.preferences.ticket().find("PrintTicket"), std::string::npos);
  EXPECT_NE(world.preferences.ticketSchema().find("PageMirrorImage"), std::string::npos);
  EXPECT_NE(world.preferences.capabilities().find("PrintCapabilities"), std::string::npos);
}

}  // namespace
