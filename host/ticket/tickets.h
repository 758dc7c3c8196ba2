// PrintTickets of this host: the service that plug-ins convert with, and whole documents for the host's own use.
//
//   1. a plug-in answers getSchema with loadSchema, and its two conversions call propertiesToTicket and
//      ticketToProperties;
//   2. the host calls document, load and capabilities, which ask the plug-in and do the rest: XML, line numbers, and
//   what
//      a loaded ticket says that the plug-in's schema does not know.
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

// For one run and one plug-in. `chromeFolders` outlives it.
class TicketService final : public Kiln::Services::Tickets {
 public:
  explicit TicketService(const ChromeFolders& chromeFolders) : folders(chromeFolders) {}

  // The PrintTicket of the properties: UTF-8 with an XML declaration. It has what the last loaded ticket had beyond the
  // schema. With the level `job` it says everything; with a narrower one, job settings are left out. Throws
  // std::runtime_error: one sentence that names the property.
  std::string document(Kiln::PTPlugin& plugin, PropertyModel& model, Kiln::PTLevel level);

  // Writes a PrintTicket's settings into the properties: neither rules run nor selection changes fire. `source` names
  // the document in messages. Throws std::runtime_error, one sentence with source, line and name; all properties are
  // then as they were.
  void load(Kiln::PTPlugin& plugin, PropertyModel& model, std::string_view bytes, const std::string& source);

  // The PrintCapabilities of the model as it is now, by the plug-in's schema. Throws std::runtime_error.
  std::string capabilities(Kiln::PTPlugin& plugin, const PropertyModel& model);

  // The plug-in's schema as a document. Throws std::runtime_error.
  std::string schemaDocument(Kiln::PTPlugin& plugin);

  // Kiln::Services::Tickets. A schema is read once; the plug-in is not to change it. The element of propertiesToTicket
  // is one of this host's named PrintTicket; it becomes the root of a valid document, whatever namespace it was made
  // with.
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

  // The document that `load` is reading.
  struct Reading {
    const Node& root;
    std::string_view bytes;
    const std::string& source;
  };

  std::shared_ptr<const Schema> schemaOf(Kiln::PTPlugin& plugin);
  std::string sentence(const DocumentError& error) const;

  const ChromeFolders& folders;
  std::map<std::u16string, std::shared_ptr<const Schema>> schemas;  // by address
  const Reading* reading = nullptr;
  ForeignContent foreign;
};

Kiln::SmartPtr<TicketService> makeTickets(const ChromeFolders& chromeFolders);

}  // namespace Refhost
