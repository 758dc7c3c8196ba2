#include "tests/ticket/ticket_world.h"

#include "tests/ticket/validity.h"

#include <gtest/gtest.h>

namespace Testing {
namespace {

template <class Work>
std::string sentenceOf(const Work& work) {
  try {
    work();
  } catch (const std::runtime_error& refusal) {
    return refusal.what();
  }
  return "";
}

}  // namespace

TicketHost::TicketHost(const std::filesystem::path& packages, Refhost::ModelDescription description)
    : chrome(packages),
      strings(Refhost::ChromeFolders(RESOURCES_FOLDER), "en-US"),
      files{Files::realDisk(), trace, {}},
      model(Refhost::make<Refhost::PropertyModel>(std::move(description), trace)),
      host({face, trace, chrome, strings, files, *model}),
      service(host.ticketDocuments()) {}

TicketWorld::TicketWorld(const std::string& modelName)
    : TicketHost(RESOURCES_FOLDER, Refhost::readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", modelName)),
      library(Refhost::make<Refhost::Library>(std::filesystem::path(PLUGIN_FILE))) {
  const Kiln::SmartPtr<Kiln::UIPlugin> made(library->createPlugin()(
      host, Refhost::make<Refhost::PropertyManager>(model, trace), Refhost::text("effect"), nullptr, library));
  plugin = Kiln::smartCast<Kiln::PTPlugin>(made);
  if (!plugin) throw std::logic_error("the plug-in makes no tickets");
}

void TicketWorld::set(std::u16string_view name, std::u16string_view value) {
  if (!model->start(name, value)) throw std::logic_error("the model has no such property");
}

void TicketWorld::set(const Values& values) {
  for (const auto& [name, value] : values) set(name, value);
}

std::string TicketWorld::ticket(Kiln::PTLevel level) {
  const std::string bytes = service.document(*plugin, *model, level);
  EXPECT_EQ(faultsOf(bytes), std::vector<std::string>()) << bytes;
  return bytes;
}

std::string TicketWorld::capabilities() {
  const std::string bytes = service.capabilities(*plugin, *model);
  EXPECT_EQ(faultsOf(bytes), std::vector<std::string>()) << bytes;
  return bytes;
}

std::string TicketWorld::refusalOf(std::string_view bytes) {
  const auto before = model->values();
  const std::string sentence = sentenceOf([&] { load(bytes); });
  if (!sentence.empty()) {
    EXPECT_EQ(model->values(), before) << sentence;
  }
  return sentence;
}

std::string TicketWorld::refusalToWrite() {
  const auto before = model->values();
  const std::string sentence = sentenceOf([&] { service.document(*plugin, *model, Kiln::PTLevel::job); });
  EXPECT_EQ(model->values(), before);
  return sentence;
}

std::string ticketAround(std::string_view content) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<psf:PrintTicket version="1"
    xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
    xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema"
    xmlns:kw="urn:kilnworks:printschema:effect:1">
)" + std::string(content) +
         "\n</psf:PrintTicket>\n";
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  const auto found = text.find(from);
  if (found == text.npos) throw std::logic_error("not in the text: " + std::string(from));
  return text.replace(found, from.size(), to);
}

}  // namespace Testing
