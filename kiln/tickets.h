// The host's generic PrintTicket conversion, driven by a schema document that a plug-in names.
#pragma once

#include "kiln/dom.h"
#include "kiln/property.h"

namespace Kiln {

class PTPlugin;
enum class PTLevel : std::int32_t;

namespace Services {

class Tickets : public RefCount {
 public:
  // The schema at a chrome:// address. Throws Exception when it cannot be read. [plug-in]
  virtual SmartPtr<Dom::INode> loadSchema(WStringView url) = 0;

  // Adds to `element` what the plug-in's schema makes of the properties. An empty element is accepted: nothing is made.
  // [plug-in]
  virtual void propertiesToTicket(PTPlugin& plugin, SmartPtr<Dom::INode> element, Property& properties,
                                  PTLevel level) = 0;

  // Writes what the ticket says into the properties, all of it or, when it throws Exception, nothing. [plug-in]
  virtual void ticketToProperties(PTPlugin& plugin, SmartPtr<Dom::INode> ticket, Property& properties) = 0;
};

}  // namespace Services
}  // namespace Kiln
