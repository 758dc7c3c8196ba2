#include "app/choices.h"

#include "formats/near_names.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace App {
namespace {

using Refhost::PropertyDescription;
using Refhost::PropertyModel;

std::string inQuotes(std::u16string_view name) { return Formats::quoted(Formats::toUtf8(name)); }

// The same, for sentences.
std::vector<std::string> inUtf8(const std::vector<std::u16string>& names) {
  std::vector<std::string> texts;
  for (const std::u16string& name : names) texts.push_back(Formats::toUtf8(name));
  return texts;
}

// The properties that users may set.
std::vector<std::string> settableNames(const PropertyModel& model) {
  std::vector<std::string> names;
  for (const PropertyDescription& property : model.description().properties)
    if (!property.isContext) names.push_back(Formats::toUtf8(property.name));
  return names;
}

void demandOption(const PropertyModel& model, const std::u16string& name, const std::u16string& value) {
  const auto& all = model.description().properties;
  const auto property = std::ranges::find(all, name, &PropertyDescription::name);
  const auto& options = property->options;
  if (!options.empty() && std::ranges::find(options, value) == options.end())
    throw std::runtime_error(Formats::sentence("The property {1} cannot be {2}; it can be {3}.", inQuotes(name),
                                               inQuotes(value), Formats::alternatives(inUtf8(options))) +
                             Formats::didYouMean(inUtf8(options), Formats::toUtf8(value)));
  if (!model.allows(name, value))
    throw std::runtime_error(
        Formats::sentence("The property {1} cannot be {2} now: the rules of the model {3} forbid it.", inQuotes(name),
                          inQuotes(value), inQuotes(model.description().name)));
}

}  // namespace

void demandSettable(const PropertyModel& model, const std::u16string& name) {
  if (!model.isKnown(name)) {
    const auto near = Formats::nearNames(settableNames(model), Formats::toUtf8(name));
    if (near.empty()) throw std::runtime_error(Formats::sentence("There is no property {1}.", inQuotes(name)));
    throw std::runtime_error(
        Formats::sentence("There is no property {1}; did you mean {2}?", inQuotes(name), Formats::alternatives(near)));
  }
  if (model.isContext(name))
    throw std::runtime_error(Formats::sentence(
        "The property {1} is a fact of the printer or the job, which cannot be set; choose a model instead.",
        inQuotes(name)));
}

void choose(Refhost::Preferences& preferences, SilentFace& face, const Refhost::TracePairs& choices) {
  const PropertyModel& model = preferences.model();
  for (const auto& [name, value] : choices) demandSettable(model, name);
  std::map<std::u16string, std::u16string> chosen;
  for (const auto& [name, value] : choices) {
    demandOption(model, name, value);
    preferences.set(name, value);
    face.check();
    chosen[name] = value;
  }
  for (const auto& [name, value] : chosen) {
    const std::u16string kept = model.value(name).value_or(u"");
    if (kept != value)
      throw std::runtime_error(Formats::sentence(
          "The property {1} was set to {2}, and became {3} by the other settings and the rules of the model {4}.",
          inQuotes(name), inQuotes(value), inQuotes(kept), inQuotes(model.description().name)));
    demandOption(model, name, value);
  }
}

}  // namespace App
