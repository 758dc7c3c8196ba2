// The initial state, and what follows when properties change.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "check/plugin/tabs.h"
#include "formats/text.h"

namespace Checking {
namespace {

using Formats::toUtf8;
using Refhost::Library;

void isTheSameTwice(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.open();
  const auto first = shownState(opening);
  opening.announce();
  const auto second = shownState(opening);
  for (std::size_t i = 0; i < first.size(); ++i)
    demand(first[i] == second[i], "The widget " + toUtf8(first[i].first) + " was \"" + toUtf8(first[i].second) +
                                      "\", and is \"" + toUtf8(second[i].second) +
                                      "\" when the initial state is announced once more.");
}

// Calls `visit` for each property that users may set, and each value of it.
template <class Visit>
void forEachOption(const Opening& opening, const Visit& visit) {
  const auto properties = opening.model().description().properties;
  for (const auto& property : properties)
    for (const auto& option : property.options) visit(property.name, option);
}

void followsOptions(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.open();
  forEachOption(opening, [&](const std::u16string& name, const std::u16string& option) {
    opening.act([&] { opening.model().submit({{name, option}}); });
  });
}

void followsAvailability(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.open();
  forEachOption(opening, [&](const std::u16string& name, const std::u16string& option) {
    opening.act([&] { opening.model().setAvailable(name, option, false); });
    opening.announce();
    opening.act([&] { opening.model().setAvailable(name, option, true); });
  });
}

void survivesUnknownValues(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  const std::u16string values[] = {u"",      u"Check", u"-1", u"99999999999999999999", std::u16string(5000, u'x'),
                                   u"\xD800"};
  for (const Refhost::Mode mode : {Refhost::Mode::docProp, Refhost::Mode::rootless}) {
    Opening opening(subject, *library, {.mode = mode});
    opening.open();
    const auto properties = opening.model().description().properties;
    for (const auto& property : properties)
      for (const std::u16string& value : values) opening.act([&] { opening.model().submit({{property.name, value}}); });
    opening.announce();
  }
}

}  // namespace

std::vector<Check> stateChecks() {
  return {
      {"state/initial-twice", "shows the same when the initial state is announced twice", isTheSameTwice},
      {"state/options", "follows each option of each property", followsOptions},
      {"state/availability", "follows each option that becomes unavailable, and available again", followsAvailability},
      {"state/unknown-values", "survives values of properties that the model does not list", survivesUnknownValues}};
}

}  // namespace Checking
