// Models that lack a property.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "formats/text.h"
#include "host/plugin_description.h"

#include <algorithm>

namespace Checking {
namespace {

using Formats::toUtf8;
using Refhost::Library;

// The sentence of the exception that ends the opening; empty when it opens. Rethrows what is no std::exception.
std::string refusalOf(Opening& opening) {
  try {
    opening.open();
  } catch (const Skipped&) {
    throw;
  } catch (const std::exception& error) {
    return std::string("\"") + error.what() + '"';
  }
  return {};
}

// Whether the package says that the plug-in does without the property, by naming it as optional or not at all.
bool isOptional(const std::optional<Refhost::PluginDescription>& plugin, const std::u16string& property) {
  if (!plugin) return false;
  const auto needed = std::ranges::find(plugin->properties, property, &Refhost::NeededName::name);
  return needed == plugin->properties.end() || needed->need == Refhost::Need::optional;
}

void opensWithoutEachProperty(const Subject& subject) {
  const auto description = Refhost::describePlugin(Refhost::ChromeFolders(subject.resources), subject.library);
  const auto library = Refhost::make<Library>(subject.library);
  const Refhost::ModelDescription model = Refhost::readModel(subject.resources / "models", subject.model);
  for (const auto& property : model.properties) {
    const std::string name = toUtf8(property.name);
    for (const Refhost::Mode mode : {Refhost::Mode::docProp, Refhost::Mode::prePrint, Refhost::Mode::rootless}) {
      const long before = Refhost::heap().blocks();
      std::string refusal;
      {
        Opening opening(subject, *library, {.mode = mode, .withoutProperty = property.name});
        refusal = refusalOf(opening);
      }
      demand(refusal.empty() || !isOptional(description, property.name),
             "The plug-in does not open without the property " + name +
                 ", which its package does not call mandatory: " + refusal);
      demand(refusal != "\"\"", "The plug-in does not open without the property " + name + ", and does not say why.");
      const long left = Refhost::heap().blocks() - before;
      demand(left == 0,
             std::to_string(left) + " blocks are left when the plug-in opens without the property " + name + ".");
    }
  }
}

}  // namespace

std::vector<Check> propertyChecks() {
  return {{"properties/missing", "opens without each property, or says by an exception why it does not",
           opensWithoutEachProperty}};
}

}  // namespace Checking
