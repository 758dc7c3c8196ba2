// Puts settings of a job into every ticket.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class OneLevel final : public Services::Tickets {
 public:
  explicit OneLevel(SmartPtr<Services::Tickets> answering) : inner(std::move(answering)) {}

  SmartPtr<Dom::INode> loadSchema(WStringView url) override { return inner->loadSchema(url); }
  void propertiesToTicket(PTPlugin& plugin, SmartPtr<Dom::INode> element, Property& properties, PTLevel) override {
    inner->propertiesToTicket(plugin, std::move(element), properties, PTLevel::job);
  }
  void ticketToProperties(PTPlugin& plugin, SmartPtr<Dom::INode> ticket, Property& properties) override {
    inner->ticketToProperties(plugin, std::move(ticket), properties);
  }

 private:
  SmartPtr<Services::Tickets> inner;
};

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<Services::Tickets> tickets() override { return make<OneLevel>(HostAround::tickets()); }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
