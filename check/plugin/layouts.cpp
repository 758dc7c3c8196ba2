// The plug-in's layouts and texts, and layouts that differ from them.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "check/plugin/tabs.h"
#include "files/disk.h"
#include "formats/text.h"

#include <set>

namespace Checking {
namespace {

using Formats::toUtf8;
using Refhost::Library;

constexpr std::size_t largestLayout = std::size_t{16} << 20;

Opening& opened(Opening& opening) {
  opening.open();
  if (opening.layouts().empty()) throw Skipped("The plug-in loads no layout.");
  return opening;
}

void loadsEveryLayout(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opened(opening).face.told.clear();
  for (const LayoutFile& layout : layoutsOf(opening, subject.resources)) {
    const bool isDialog = bool(opening.gui().openDialog(layout.address));
    demand(isDialog && opening.face.told.empty(),
           opening.face.told.empty() ? toUtf8(layout.address) + " is no layout." : opening.face.told.front());
  }
}

std::set<std::u16string> referencesIn(const std::string& layout) {
  std::set<std::u16string> references;
  for (auto start = layout.find("$IDS_"); start != layout.npos; start = layout.find("$IDS_", start + 1))
    references.insert(Formats::toUtf16(layout.substr(start, layout.find(';', start) - start + 1)));
  return references;
}

void resolvesEveryText(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opened(opening);
  for (const std::string& package : packagesOf(opening))
    for (const std::string& locale : opening.chrome().locales(package)) {
      const Refhost::StringTables strings(opening.chrome(), locale);
      for (const LayoutFile& layout : layoutsOf(opening, subject.resources))
        for (const auto& reference : referencesIn(Files::realDisk().read(layout.file, largestLayout)))
          demand(strings.resolve(reference) != reference,
                 toUtf8(reference) + " of " + toUtf8(layout.address) + " is in no string table of " + locale + ".");
    }
}

void showsTextsOfEveryLocale(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening first(subject, *library);
  opened(first);
  for (const std::string& package : packagesOf(first))
    for (const std::string& locale : first.chrome().locales(package)) {
      Opening opening(subject, *library, {.locale = locale});
      opening.open();
      for (const auto& [id, state] : shownState(opening))
        demand(state.find(u"$IDS_") == state.npos, "The widget " + toUtf8(id) +
                                                       " shows a reference that is in no string table of " + locale +
                                                       ": " + toUtf8(state));
    }
}

// What follows when a user and the model change everything that there is.
void changeEverything(Opening& opening) {
  const auto properties = opening.model().description().properties;
  for (const auto& property : properties)
    for (const auto& option : property.options) {
      opening.act([&] { opening.model().submit({{property.name, option}}); });
      opening.act([&] { opening.model().setAvailable(property.name, option, false); });
      opening.act([&] { opening.model().setAvailable(property.name, option, true); });
    }
}

// Opens, by conditions of each widget's id in turn.
template <class Make>
void opensWithEach(const Subject& subject, const Make& conditionsOf, const std::string& what) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening whole(subject, *library);
  opened(whole);
  for (const std::u16string& id : widgetIds(whole)) {
    Opening opening(subject, *library, conditionsOf(id));
    try {
      opening.open();
      changeEverything(opening);
    } catch (const Skipped&) {
      throw;
    } catch (...) {
      throw Failed("The plug-in throws " + what + toUtf8(id) + ": " + sentenceOfCurrentException());
    }
  }
}

void opensWithoutEachWidget(const Subject& subject) {
  opensWithEach(
      subject, [](const std::u16string& id) { return Conditions{.withoutWidgets = {id}}; },
      "when the layout has no widget ");
}

void opensWithOtherKinds(const Subject& subject) {
  opensWithEach(
      subject, [](const std::u16string& id) { return Conditions{.labels = {id}}; },
      "when a label has the id of the widget ");
}

}  // namespace

std::vector<Check> layoutChecks() {
  return {{"layouts/load", "has layouts that load without complaint", loadsEveryLayout},
          {"layouts/texts", "has every text of its layouts in each of its locales", resolvesEveryText},
          {"layouts/locales", "shows no unresolved text in any of its locales", showsTextsOfEveryLocale},
          {"layouts/missing-widget", "does without each widget of its tab", opensWithoutEachWidget},
          {"layouts/other-kind", "leaves a widget of another kind alone", opensWithOtherKinds}};
}

}  // namespace Checking
