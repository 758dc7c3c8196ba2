// This host's PrintTickets: the conversion service for plug-ins, and complete documents for the host itself.
//
//   1. a plug-in implements getSchema by loadSchema, and its two conversions by propertiesToTicket and
//      ticketToProperties;
//   2. the host calls document, load and capabilities, which call the plug-in and add the rest: XML, line numbers, and
//      content of a loaded ticket that is not in the plug-in's schema.
#pragma once

#include "host/chrome/addresses.h"
#include "host/model/properties.h"
#include "host/ticket/foreign_content.h"
#include "host/ticket/schema.h"
#include "kiln/plugin.h"
#include "kiln/tickets.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace Refhost {

// Serves one run and one plug-in. `chromeFolders` and `pluginCalls` outlive it.
class TicketService final : public Kiln::Services::Tickets {
 public:
  TicketService(const ChromeFolders& chromeFolders, PluginCalls& pluginCalls)
      : folders(chromeFolders),
        calls(pluginCalls) {}

  // Makes loadSchema reject properties that `isKnown` does not know. A schema may name properties that the model lacks,
  // since models differ; none by default, since a plug-in need not say what it knows.
  void onlyKnows(KnowsProperty isKnown) { knowsProperty = std::move(isKnown); }

  // The PrintTicket of the properties: UTF-8 with an XML declaration, including foreign content of the last loaded
  // ticket. With the level `job` it is complete; narrower levels omit job settings. Throws std::runtime_error: one
  // sentence that names the property.
  std::string document(Kiln::PTPlugin& plugin, PropertyModel& model, Kiln::PTLevel level);

  // Writes a PrintTicket's settings into the properties, without rules or selection changes. `source` is the document's
  // name in messages. Throws std::runtime_error, one sentence with source, line and name; all properties are then
  // unchanged.
  void load(Kiln::PTPlugin& plugin, PropertyModel& model, std::string_view bytes, const std::string& source);

  // The PrintCapabilities of the model's current state, by the plug-in's schema. Throws std::runtime_error.
  std::string capabilities(Kiln::PTPlugin& plugin, const PropertyModel& model);

  // The plug-in's schema as a document. Throws std::runtime_error.
  std::string schemaDocument(Kiln::PTPlugin& plugin);

  // Kiln::Services::Tickets. A schema is loaded once and must not be modified. propertiesToTicket requires an element
  // of this host named PrintTicket, and makes it the root of a valid document, whatever its namespace.
  Kiln::SmartPtr<Kiln::Dom::INode> loadSchema(Kiln::WStringView url) override;
  void propertiesToTicket(Kiln::PTPlugin& plugin, Kiln::SmartPtr<Kiln::Dom::INode> element, Kiln::Property& properties,
                          Kiln::PTLevel level) override;
  void ticketToProperties(Kiln::PTPlugin& plugin, Kiln::SmartPtr<Kiln::Dom::INode> ticket,
                          Kiln::Property& properties) override;

 private:
  struct Schema {
    Kiln::SmartPtr<Node> document;
    TicketSchema mapping;
  };

  // The document being read by `load`.
  struct Reading {
    const Node& root;
    std::string_view bytes;
    const std::string& source;
  };

  std::shared_ptr<const Schema> schemaOf(Kiln::PTPlugin& plugin);
  std::string sentence(const DocumentError& error) const;

  const ChromeFolders& folders;
  PluginCalls& calls;
  KnowsProperty knowsProperty;
  std::map<std::u16string, std::shared_ptr<const Schema>> schemas;  // by address
  const Reading* reading = nullptr;
  ForeignContent foreign;
};

Kiln::SmartPtr<TicketService> makeTickets(const ChromeFolders& chromeFolders, PluginCalls& pluginCalls);

}  // namespace Refhost
