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

  // Converts the properties by the plug-in's schema and adds the result to `element`, a "PrintTicket" element of
  // Documents::createElement: the settings of `level` and narrower scopes. Does nothing when `element` is null, which
  // is allowed. Throws Exception when a value cannot be converted. [plug-in]
  virtual void propertiesToTicket(PTPlugin& plugin, SmartPtr<Dom::INode> element, Property& properties,
                                  PTLevel level) = 0;

  // Writes the ticket's settings into the properties, all or nothing. Throws Exception when the ticket is invalid.
  // [plug-in]
  virtual void ticketToProperties(PTPlugin& plugin, SmartPtr<Dom::INode> ticket, Property& properties) = 0;
};

}  // namespace Services
}  // namespace Kiln
