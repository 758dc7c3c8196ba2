// Any bytes as a PrintTicket, read by the schema that the plug-in ships: a ticket that is refused leaves the properties
// as they were; one that is read is written, and gives another host the same properties and the same ticket.
#include "fuzz/fuzzing.h"
#include "tests/support/host_world.h"
#include "tests/ticket/ticket_world.h"

#include <stdexcept>

namespace {

using Fuzzing::demand;

struct World {
  Testing::HostWorld around{Fuzzing::folder() / "home"};
  Testing::PlainPlugin plugin{around.host, u"chrome://effect/content/schema_effect.xml"};
  Refhost::TicketService& service = around.host.ticketDocuments();
  Refhost::PropertyModel& model = *around.manager->model;
  const Refhost::TracePairs start = model.values();

  void restart() {
    for (const auto& [name, value] : start) model.start(name, value);
  }
  void load(std::string_view bytes) { service.load(plugin, model, bytes, "input"); }
  std::string written(Kiln::PTLevel level = Kiln::PTLevel::job) { return service.document(plugin, model, level); }
};

bool isRead(World& world, std::string_view bytes) {
  world.restart();
  try {
    world.load(bytes);
    return true;
  } catch (const std::runtime_error&) {
    demand(world.model.values() == world.start);
    return false;
  }
}

void check(World& world, World& other, std::string_view bytes) {
  if (!isRead(world, bytes)) return;
  const auto values = world.model.values();
  const std::string ticket = world.written();
  const std::string ofPage = world.written(Kiln::PTLevel::page);
  demand(world.model.values() == values);

  other.restart();
  other.load(ticket);
  demand(other.model.values() == values);
  demand(other.written() == ticket);
  other.load(ofPage);
  Refhost::readXml(world.service.capabilities(world.plugin, world.model), "capabilities", Refhost::documentLimits);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World& world = *new World;
  static World& other = *new World;
  check(world, other, Fuzzing::text(data, size));
  return 0;
}
