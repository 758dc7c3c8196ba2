// Any bytes as a model description, beside those that are shipped, which it may extend: what is read names nothing that
// it does not have, is read again the same once it is written, and its rules come to an end whatever is chosen.
#include "formats/text.h"
#include "fuzz/fuzzing.h"
#include "host/model/properties.h"

#include <stdexcept>

namespace {

using namespace Refhost;
using Fuzzing::demand;

// An attribute.
std::string attribute(const char* name, std::u16string_view value) {
  std::string result = std::string(" ") + name + "=\"";
  for (const char unit : Formats::toUtf8(value)) {
    if (unit == '&' || unit == '<' || unit == '"' || unit == '\t' || unit == '\n' || unit == '\r')
      result += "&#" + std::to_string(int{unit}) + ";";
    else
      result += unit;
  }
  return result + '"';
}

std::string written(const ModelDescription& model) {
  std::string bytes = "<model" + attribute("name", model.name) + attribute("label", model.label) + ">\n";
  for (const auto& property : model.properties) {
    bytes += "<property" + attribute("name", property.name) + attribute("value", property.defaultValue) +
             (property.isContext ? " context=\"true\">" : ">");
    for (const auto& option : property.options) bytes += "<option" + attribute("value", option) + "/>";
    bytes += "</property>\n";
  }
  for (const auto& rule : model.rules) {
    bytes += "<rule" + attribute("unavailable", rule.property) + attribute("option", rule.option) + ">";
    for (const auto& condition : rule.conditions)
      bytes += "<when" + attribute("property", condition.property) + attribute("is", condition.value) + "/>";
    bytes += "</rule>\n";
  }
  return bytes + "</model>\n";
}

void demandWhole(const PropertyModel& model) {
  const ModelDescription& description = model.description();
  for (const auto& rule : description.rules) {
    demand(model.isKnown(rule.property));
    for (const auto& condition : rule.conditions) demand(model.isKnown(condition.property));
  }
  for (const auto& property : description.properties) demand(model.isContext(property.name) == property.isContext);
}

// Chooses the options one after another, as many as there is time for.
void choose(PropertyModel& model) {
  int left = 60;
  for (const auto& property : model.description().properties)
    for (const auto& option : property.options) {
      if (left-- == 0) return;
      const bool isAllowed = model.allows(property.name, option);
      model.submit({{property.name, option}});
      if (isAllowed && model.allows(property.name, option)) demand(model.value(property.name) == option);
      demand(model.printedValues().size() == model.description().properties.size());
    }
}

void check(std::string_view bytes) {
  static const auto models = [] {
    std::filesystem::copy(std::filesystem::path(RESOURCES_FOLDER) / "models", Fuzzing::folder() / "models");
    return Fuzzing::folder() / "models";
  }();
  static const Trace trace;
  const auto file = models / "input.model";
  Fuzzing::write(file, bytes);
  ModelDescription description;
  try {
    description = readModel(models, file.string());
  } catch (const std::runtime_error&) {
    return;
  }
  const std::string flat = written(description);
  Fuzzing::write(file, flat);
  demand(written(readModel(models, file.string())) == flat);

  const auto model = make<PropertyModel>(description, trace);
  demandWhole(*model);
  choose(*model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Fuzzing::text(data, size));
  return 0;
}
