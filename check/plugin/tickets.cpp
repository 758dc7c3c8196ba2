// The plug-in's PrintTickets.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "formats/text.h"

namespace Checking {
namespace {

using Formats::toUtf8;
using Refhost::Library;

constexpr const char* ticketName = "The check's ticket";

struct Tickets {
  explicit Tickets(const Subject& subject)
      : library(Refhost::make<Library>(subject.library)),
        opening(subject, *library, {.mode = Refhost::Mode::rootless}) {
    opening.makePlugin();
    opening.begin();
    part = opening.ticketPlugin();
  }

  std::string write(Kiln::PTLevel level = Kiln::PTLevel::job) {
    return opening.tickets().document(*part, opening.model(), level);
  }
  void read(const std::string& ticket) { opening.tickets().load(*part, opening.model(), ticket, ticketName); }
  void set(const std::u16string& name, const std::u16string& value) { opening.model().child(name)->setValue(value); }
  void reset() {
    for (const auto& property : opening.model().description().properties) set(property.name, property.defaultValue);
  }

  // Calls `visit` with each value of each property that users may set, which is set, and all others to the default.
  template <class Visit>
  void forEachOption(const Visit& visit) {
    const auto properties = opening.model().description().properties;
    for (const auto& property : properties)
      for (const auto& option : property.options) {
        if (property.isContext) continue;
        reset();
        set(property.name, option);
        visit(property.name, option);
      }
  }

  Kiln::SmartPtr<Library> library;
  Opening opening;
  Kiln::SmartPtr<Kiln::PTPlugin> part;
};

void loadsItsSchema(const Subject& subject) {
  Tickets tickets(subject);
  demand(bool(tickets.part->getSchema()), "getSchema returns null.");
  tickets.opening.tickets().schemaDocument(*tickets.part);
  tickets.opening.tickets().capabilities(*tickets.part, tickets.opening.model());
}

void convertsAtAnyTime(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Refhost::Mode mode : {Refhost::Mode::docProp, Refhost::Mode::prePrint, Refhost::Mode::rootless}) {
    Opening opening(subject, *library, {.mode = mode});
    opening.makePlugin();
    const auto write = [&opening] {
      return opening.tickets().document(*opening.ticketPlugin(), opening.model(), Kiln::PTLevel::job);
    };
    const std::string first = write();
    opening.begin();
    demand(write() == first, "The ticket of the same properties is another one after initialise.");
    opening.activate();
    opening.fireReady();
    opening.announce();
    write();
  }
}

void returnsEveryOption(const Subject& subject) {
  Tickets tickets(subject);
  tickets.reset();
  const std::string standard = tickets.write();
  tickets.forEachOption([&](const std::u16string& name, const std::u16string& option) {
    const std::string ticket = tickets.write();
    tickets.reset();
    tickets.read(ticket);
    if (ticket == standard) return;  // tickets do not have this property
    const std::u16string found = *tickets.opening.model().value(name);
    // Of two options with the same ticket either one is right.
    demand(found == option || tickets.write() == ticket, "The ticket of " + toUtf8(name) + "=" + toUtf8(option) +
                                                             " gives " + toUtf8(name) + "=" + toUtf8(found) + ".");
  });
}

void demandUnchanged(const Refhost::TracePairs& before, const Refhost::TracePairs& after, const std::string& when) {
  for (std::size_t i = 0; i < before.size(); ++i)
    demand(before[i] == after[i], "The property " + toUtf8(before[i].first) + " was \"" + toUtf8(before[i].second) +
                                      "\", and is \"" + toUtf8(after[i].second) + "\" " + when + ".");
}

void leavesThePropertiesAlone(const Subject& subject) {
  Tickets tickets(subject);
  tickets.forEachOption([&](const std::u16string&, const std::u16string&) {
    const auto before = tickets.opening.model().values();
    for (const Kiln::PTLevel level : {Kiln::PTLevel::page, Kiln::PTLevel::document, Kiln::PTLevel::job})
      tickets.write(level);
    demandUnchanged(before, tickets.opening.model().values(), "after convertPMtoPT");
    for (long blocks = 0, isOut = 1; isOut != 0; blocks += 1 + blocks / 8) {
      isOut = 0;
      Refhost::heap().failAfter(blocks);
      try {
        tickets.part->convertPMtoPT(tickets.opening.model(), Kiln::PTLevel::job);
      } catch (...) {
        isOut = 1;
      }
      Refhost::heap().failAfter(-1);
      demandUnchanged(before, tickets.opening.model().values(), "after convertPMtoPT, which has thrown");
    }
  });
}

void passesTheLevelOn(const Subject& subject) {
  Tickets tickets(subject);
  const std::string schema = tickets.opening.tickets().schemaDocument(*tickets.part);
  if (schema.find("scope=\"job\"") == schema.npos) throw Skipped("The schema has no feature of a job's scope.");
  bool differs = false;
  tickets.forEachOption([&](const std::u16string&, const std::u16string&) {
    differs = differs || tickets.write(Kiln::PTLevel::page) != tickets.write(Kiln::PTLevel::job);
  });
  demand(differs, "A page's ticket has the same features as a job's, though the schema has features of a job's scope.");
}

void refusesAnInvalidTicket(const Subject& subject) {
  Tickets tickets(subject);
  tickets.reset();
  const auto before = tickets.opening.model().values();
  const auto nonsense = Refhost::make<Refhost::Node>(u"Nonsense");
  bool isRefused = false;
  try {
    tickets.part->convertPTtoPM(nonsense, tickets.opening.model());
  } catch (const Kiln::Exception&) {
    isRefused = true;
  }
  demand(isRefused, "convertPTtoPM takes a document that is no ticket; expected an Exception.");
  demandUnchanged(before, tickets.opening.model().values(), "after convertPTtoPM, which has thrown");
}

void leavesNoBlocks(const Subject& subject) {
  const long before = Refhost::heap().blocks();
  {
    Tickets tickets(subject);
    tickets.reset();
    tickets.read(tickets.write());
    tickets.part->getSchema();
  }
  const long left = Refhost::heap().blocks() - before;
  demand(left == 0, std::to_string(left) + " blocks of the host's allocator are left after tickets.");
}

}  // namespace

std::vector<Check> ticketChecks() {
  return {{"tickets/schema", "names a schema that loads", loadsItsSchema},
          {"tickets/any-time", "makes tickets at any time once it is made", convertsAtAnyTime},
          {"tickets/round-trip", "gives each option back that a ticket has", returnsEveryOption},
          {"tickets/unchanged", "leaves the properties alone when it makes a ticket, also when that throws",
           leavesThePropertiesAlone},
          {"tickets/level", "passes the level of a ticket on", passesTheLevelOn},
          {"tickets/invalid", "refuses what is no ticket, and leaves the properties alone", refusesAnInvalidTicket},
          {"tickets/memory", "leaves no block of the host's allocator after tickets", leavesNoBlocks}};
}

}  // namespace Checking
