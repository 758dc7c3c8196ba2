#include "app/choices.h"

#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <stdexcept>

namespace App {
namespace {

using Refhost::PropertyDescription;
using Refhost::PropertyModel;

std::string inQuotes(std::u16string_view name) { return Formats::quoted(Formats::toUtf8(name)); }

// "A", "A or B", "A, B or C".
std::string alternatives(const std::vector<std::u16string>& names) {
  std::string listed;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = inQuotes(names[i]);
    if (i == 0)
      listed = name;
    else if (i + 1 == names.size())
      listed = Formats::sentence("{1} or {2}", listed, name);
    else
      listed = Formats::sentence("{1}, {2}", listed, name);
  }
  return listed;
}

char16_t toLower(char16_t unit) { return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit; }

// The case-insensitive edit distance of two names.
std::size_t distance(std::u16string_view a, std::u16string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (toLower(a[i]) == toLower(b[j]) ? 0 : 1);
      diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
    }
  }
  return row.back();
}

// Suggestions for a misspelt `name`, best match first.
std::vector<std::u16string> nearNames(const PropertyModel& model, const std::u16string& name) {
  constexpr std::size_t most = 3;
  const std::size_t farthest = std::max<std::size_t>(2, name.size() / 3);
  std::multimap<std::size_t, std::u16string> byDistance;
  for (const PropertyDescription& property : model.description().properties)
    if (!property.isContext) byDistance.emplace(distance(name, property.name), property.name);
  std::vector<std::u16string> names;
  for (const auto& [steps, near] : byDistance)
    if (steps <= farthest && names.size() < most) names.push_back(near);
  return names;
}

void demandOption(const PropertyModel& model, const std::u16string& name, const std::u16string& value) {
  const auto& all = model.description().properties;
  const auto property = std::ranges::find(all, name, &PropertyDescription::name);
  const auto& options = property->options;
  if (!options.empty() && std::ranges::find(options, value) == options.end())
    throw std::runtime_error(Formats::sentence("The property {1} cannot be {2}; it can be {3}.", inQuotes(name),
                                               inQuotes(value), alternatives(options)));
  if (!model.allows(name, value))
    throw std::runtime_error(
        Formats::sentence("The property {1} cannot be {2} now: the rules of the model {3} forbid it.", inQuotes(name),
                          inQuotes(value), inQuotes(model.description().name)));
}

}  // namespace

void demandSettable(const PropertyModel& model, const std::u16string& name) {
  if (!model.isKnown(name)) {
    const auto near = nearNames(model, name);
    if (near.empty()) throw std::runtime_error(Formats::sentence("There is no property {1}.", inQuotes(name)));
    throw std::runtime_error(
        Formats::sentence("There is no property {1}; did you mean {2}?", inQuotes(name), alternatives(near)));
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
