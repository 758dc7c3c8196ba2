#include "host/ticket/tickets.h"

#include "files/disk.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/documents.h"
#include "host/ticket/capabilities.h"
#include "host/ticket/conversion.h"
#include "host/ticket/lines.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace Refhost {
namespace {

using Values = std::vector<std::pair<std::u16string, std::u16string>>;

// Writes all values, or none on failure.
void writeAll(Kiln::Property& properties, const Values& values) {
  Values before;
  for (const auto& [name, value] : values) before.emplace_back(name, properties.child(name)->wideValue().str());
  std::size_t written = 0;
  try {
    for (; written < values.size(); ++written)
      properties.child(values[written].first)->setValue(values[written].second);
  } catch (...) {
    for (std::size_t i = 0; i < written; ++i) properties.child(before[i].first)->setValue(before[i].second);
    throw;
  }
}

void bringBack(PropertyModel& model, const Values& values) {
  for (const auto& [name, value] : values)
    if (model.value(name) != value) model.child(name)->setValue(value);
}

// Converts what a plug-in throws and what it lets pass to exceptions of the host, which stay told apart.
template <class Work>
auto asHost(const Work& work) {
  try {
    return work();
  } catch (const HostsOwn& problem) {
    throw Own<std::runtime_error>(problem.sentence());
  } catch (const Kiln::Exception& problem) {
    throw std::runtime_error(problem.what());
  }
}

}  // namespace

std::string TicketService::document(Kiln::PTPlugin& plugin, PropertyModel& model, Kiln::PTLevel level) {
  return asHost([&] {
    const auto root = calls.run("convertPMtoPT", [&] {
      auto made = Kiln::smartCast<Node>(plugin.convertPMtoPT(model, level));
      if (!made) throw std::runtime_error(Formats::sentence("The plug-in made no PrintTicket."));
      return made;
    });
    const auto ticket = root->copy();
    foreign.addTo(schemaOf(plugin)->mapping, *ticket);
    return writeXml(*ticket);
  });
}

void TicketService::load(Kiln::PTPlugin& plugin, PropertyModel& model, std::string_view bytes,
                         const std::string& source) {
  const auto root = readXml(bytes, source, documentLimits);
  const Reading current{*root, bytes, source};
  const auto before = model.values();
  const Reading* const outer = std::exchange(reading, &current);
  try {
    asHost([&] {
      calls.run("convertPTtoPM", [&] { plugin.convertPTtoPM(root, model); });
      foreign = ForeignContent(schemaOf(plugin)->mapping, model, *root);
    });
  } catch (...) {
    reading = outer;
    bringBack(model, before);
    throw;
  }
  reading = outer;
}

std::string TicketService::capabilities(Kiln::PTPlugin& plugin, const PropertyModel& model) {
  return asHost([&] { return writeXml(*capabilitiesOf(schemaOf(plugin)->mapping, model)); });
}

std::string TicketService::schemaDocument(Kiln::PTPlugin& plugin) {
  return asHost([&] { return writeXml(*schemaOf(plugin)->document); });
}

Kiln::SmartPtr<Kiln::Dom::INode> TicketService::loadSchema(Kiln::WStringView url) {
  if (const auto known = schemas.find(std::u16string(url.view())); known != schemas.end())
    return known->second->document;
  const auto file = folders.file(url);
  if (!file) throw failure(Formats::sentence("{1} names no ticket schema.", Formats::toUtf8(url)));
  try {
    const std::string bytes = Files::realDisk().read(*file, documentLimits.bytes);
    const auto document = readXml(bytes, file->string(), documentLimits);
    try {
      schemas.emplace(url.view(), std::make_shared<Schema>(Schema{document, readSchema(*document, knowsProperty)}));
    } catch (const DocumentError& error) {
      throw failure(located(file->string(), lineOf(*error.element, *document, bytes), error.what()));
    }
    return document;
  } catch (const std::runtime_error& problem) {
    throw failure(problem.what());
  }
}

void TicketService::propertiesToTicket(Kiln::PTPlugin& plugin, Kiln::SmartPtr<Kiln::Dom::INode> element,
                                       Kiln::Property& properties, Kiln::PTLevel level) {
  if (!element) return;
  const auto root = givenBack<Node>(element, "Tickets::propertiesToTicket", "an element");
  if (root->localNameText() != u"PrintTicket")
    throw failure("Tickets::propertiesToTicket was called with an element that is not named PrintTicket.");
  try {
    writeTicket(schemaOf(plugin)->mapping, properties, level, *root);
  } catch (const std::runtime_error& problem) {
    throw failure(problem.what());
  }
}

void TicketService::ticketToProperties(Kiln::PTPlugin& plugin, Kiln::SmartPtr<Kiln::Dom::INode> ticket,
                                       Kiln::Property& properties) {
  const auto root = givenBack<Node>(ticket, "Tickets::ticketToProperties", "a ticket");
  Values values;
  try {
    values = readTicket(schemaOf(plugin)->mapping, properties, *root);
  } catch (const DocumentError& error) {
    throw failure(sentence(error));
  } catch (const std::runtime_error& problem) {
    throw failure(problem.what());
  }
  writeAll(properties, values);
}

std::shared_ptr<const TicketService::Schema> TicketService::schemaOf(Kiln::PTPlugin& plugin) {
  return calls.run("getSchema", [&]() -> std::shared_ptr<const Schema> {
    const auto document = Kiln::smartCast<Node>(plugin.getSchema());
    if (!document) throw std::runtime_error(Formats::sentence("The plug-in has no ticket schema."));
    for (const auto& [url, schema] : schemas)
      if (schema->document == document) return schema;
    try {
      return std::make_shared<Schema>(Schema{document, readSchema(*document, knowsProperty)});
    } catch (const DocumentError& error) {
      throw std::runtime_error(Formats::sentence("The plug-in's ticket schema cannot be used: {1}", error.what()));
    }
  });
}

std::string TicketService::sentence(const DocumentError& error) const {
  const std::size_t line = reading == nullptr ? 0 : lineOf(*error.element, reading->root, reading->bytes);
  return line == 0 ? Formats::sentence("The PrintTicket cannot be read: {1}", error.what())
                   : located(reading->source, line, error.what());
}

Kiln::SmartPtr<TicketService> makeTickets(const ChromeFolders& chromeFolders, PluginCalls& pluginCalls) {
  return make<TicketService>(chromeFolders, pluginCalls);
}

}  // namespace Refhost
