// A plug-in, a model and the tickets between them, without a GUI.
#pragma once

#include "files/disk.h"
#include "host/documents/documents.h"
#include "host/library.h"
#include "host/reference_host.h"
#include "host/ticket/tickets.h"
#include "tests/support/world.h"

#include <functional>
#include <string>
#include <string_view>

namespace Testing {

// The reference host with a model, and no plug-in yet.
struct TicketHost {
  // `packages`: the folder of the chrome packages that hold the schemas.
  TicketHost(const std::filesystem::path& packages, Refhost::ModelDescription description);

  Refhost::Trace trace;
  RecordingFace face;
  const Refhost::ChromeFolders chrome;
  const Refhost::StringTables strings;
  const Refhost::FileWorld files;
  const Kiln::SmartPtr<Refhost::PropertyModel> model;
  Refhost::ReferenceHost host;
  Refhost::TicketService& service;
};

// A plug-in that converts by a schema and does nothing more.
class PlainPlugin final : public Kiln::PTPlugin {
 public:
  PlainPlugin(Kiln::Host& lender, std::u16string schemaAddress)
      : PTPlugin(lender),
        host(lender),
        address(std::move(schemaAddress)) {}

  Kiln::SmartPtr<Kiln::Dom::INode> getSchema() override { return tickets->loadSchema(address); }
  Kiln::SmartPtr<Kiln::Dom::INode> convertPMtoPT(Kiln::Property& properties, Kiln::PTLevel level) override {
    const auto element = host.documents()->createElement(u"PrintTicket", u"psk", u"psk");
    tickets->propertiesToTicket(*this, element, properties, level);
    return element;
  }
  void convertPTtoPM(Kiln::SmartPtr<Kiln::Dom::INode> ticket, Kiln::Property& properties) override {
    tickets->ticketToProperties(*this, ticket, properties);
    if (afterReading) afterReading();
  }

  std::function<void()> afterReading;

 private:
  Kiln::Host& host;
  std::u16string address;
};

using Values = Refhost::TracePairs;

// The built effect plug-in and a shipped model.
class TicketWorld : public TicketHost {
 public:
  explicit TicketWorld(const std::string& modelName = "standard");

  void set(std::u16string_view name, std::u16string_view value);
  void set(const Values& values);
  std::u16string value(std::u16string_view name) const { return model->value(name).value(); }

  // The ticket, which is checked to be a valid document.
  std::string ticket(Kiln::PTLevel level = Kiln::PTLevel::job);
  void load(std::string_view bytes) { service.load(*plugin, *model, bytes, "job.xml"); }
  std::string capabilities();

  // The sentence with which a load or a ticket is refused; empty when it is not.
  std::string refusalOf(std::string_view bytes);
  std::string refusalToWrite();

 private:
  const Kiln::SmartPtr<Refhost::Library> library;

 public:
  Kiln::SmartPtr<Kiln::PTPlugin> plugin;
};

// A ticket document around `content`, with the prefixes psf, psk, xsi, xsd and kw.
std::string ticketAround(std::string_view content);

// `text` with the first `from` replaced, which must be there.
std::string replaced(std::string text, std::string_view from, std::string_view to);

}  // namespace Testing
