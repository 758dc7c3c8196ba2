// The plug-in's PrintTicket conversion: multiple overlays are written as the plain option.
#include "host/documents/documents.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

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

TEST(PrintTicket, IsMadeWithoutAGUIToo) {
  auto options = Testing::builtOptions();
  options.mode = Refhost::Mode::rootless;
  World world(options);
  EXPECT_NE(world.preferences.ticket().find("PrintTicket"), std::string::npos);
  EXPECT_NE(world.preferences.ticketSchema().find("PageMirrorImage"), std::string::npos);
  EXPECT_NE(world.preferences.capabilities().find("PrintCapabilities"), std::string::npos);
}

}  // namespace
