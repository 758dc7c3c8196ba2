#include "host/overlay_names.h"

#include "files/disk.h"
#include "files/file_set.h"
#include "files/home_lock.h"
#include "files/whole_file.h"
#include "formats/names.h"
#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/stores.h"
#include "host/profiles/home_import.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Refhost {
namespace {

namespace fs = std::filesystem;
namespace Prop = Formats::Prop;
namespace Setting = Formats::Setting;
namespace Value = Formats::Value;

std::u16string_view withoutSpaces(std::u16string_view name) {
  constexpr std::u16string_view spaces = u" \t\u00A0\u3000";
  const std::size_t first = std::min(name.find_first_not_of(spaces), name.size());
  return name.substr(first, name.find_last_not_of(spaces) + 1 - first);
}

std::string nameInQuotes(std::u16string_view name) { return Formats::quoted(Formats::toValidUtf8(name)); }

std::string takenNameSentence(std::u16string_view name) {
  return Formats::sentence("There is an overlay {1} already; choose another name.", nameInQuotes(name));
}

fs::path userIndex(const Preferences& preferences) {
  const auto folder = [&preferences](std::u16string_view key) {
    return Files::pathFromText(preferences.setting(key).value_or(u""));
  };
  return folder(Setting::userProfile) / folder(Setting::settingsFolder) /
         Files::pathFromText(Formats::overlayIndexName);
}

// Under the home's lock. The entries of the overlay's name alone change: its file may have others.
FileChanges renameInIndex(Files::Disk& disk, const fs::path& index, const Formats::IndexEntry& overlay,
                          const std::u16string& name) {
  FileContent before;
  if (disk.kind(index) == Files::EntryKind::file) before = disk.read(index, storeLimit);
  std::vector<Formats::IndexEntry> entries = Formats::readIndex(before.value_or(std::string()));
  if (std::ranges::find(entries, overlay) == entries.end())
    throw std::runtime_error(Formats::sentence("The overlay {1} is not one of this user's own, and cannot be renamed.",
                                               nameInQuotes(overlay.name)));
  for (const Formats::IndexEntry& entry : entries)
    if (entry.name == name && Formats::isOverlayFileName(entry.fileName) &&
        disk.kind(index.parent_path() / Files::pathFromText(entry.fileName)) != Files::EntryKind::none)
      throw std::runtime_error(takenNameSentence(name));
  std::ranges::replace(entries, overlay, Formats::IndexEntry{name, overlay.fileName});
  std::string after = Formats::indexBytes(entries);
  FileChanges changes;
  if (Files::replaceWhole(disk, index, after)) changes.add(index, std::move(before), std::move(after));
  return changes;
}

void checkName(Preferences& preferences, SelectorNode& list, std::int32_t index, const std::u16string& name) {
  switch (problemOf(name, reservedOverlayNames(preferences.chrome()), overlayNames(list, index))) {
    case NameProblem::none: return;
    case NameProblem::missing: throw std::runtime_error(Formats::sentence("An overlay needs a name."));
    case NameProblem::reserved: throw std::runtime_error(reservedNameSentence(name));
    case NameProblem::taken: throw std::runtime_error(takenNameSentence(name));
  }
}

// The name stands in the settings too, where tickets take it from. A selection may be by name.
void followInSettings(PropertyModel& model, const Formats::IndexEntry& overlay, const std::u16string& name) {
  const auto replace = [&model](Formats::Name property, const std::u16string& from, const std::u16string& to) {
    if (model.value(property) == from) model.child(property)->setValue(to);
  };
  replace(Prop::overlayName, overlay.name, name);
  replace(Prop::overlaySel, overlay.name, overlay.fileName);
}

}  // namespace

SelectorNode* overlayList(Preferences& preferences) {
  Gui* const gui = preferences.gui();
  return gui == nullptr ? nullptr : dynamic_cast<SelectorNode*>(gui->find(Formats::WidgetId::overlayList));
}

bool isOverlay(Kiln::XUL::ListItem& item) {
  const Kiln::WString value = item.value();
  return value.view() != Value::none && value.view() != Value::multiple;
}

std::vector<std::u16string> reservedOverlayNames(const ChromeFolders& chrome) {
  const std::vector<std::u16string> tokens{std::u16string(Formats::Token::noOverlay),
                                           std::u16string(Formats::Token::multipleOverlays)};
  std::vector<std::u16string> names{std::u16string(Value::none), std::u16string(Value::multiple)};
  names.insert(names.end(), tokens.begin(), tokens.end());  // a list would show their texts
  for (const std::string& locale : chrome.locales(Formats::pluginName)) {
    const StringTables texts(chrome, locale);
    for (const std::u16string& token : tokens) names.push_back(texts.resolve(token));
  }
  return names;
}

bool isReserved(std::u16string_view name, const std::vector<std::u16string>& reserved) {
  return std::ranges::any_of(reserved, [bare = withoutSpaces(name)](const std::u16string& each) {
    return Formats::isSameWithoutCase(bare, each);
  });
}

NameProblem problemOf(std::u16string_view name, const std::vector<std::u16string>& reserved,
                      const std::vector<std::u16string>& taken) {
  if (withoutSpaces(name).empty()) return NameProblem::missing;
  if (isReserved(name, reserved)) return NameProblem::reserved;
  const std::u16string stored = Formats::storableName(name);
  return std::ranges::find(taken, stored) == taken.end() ? NameProblem::none : NameProblem::taken;
}

std::string reservedNameSentence(std::u16string_view name) {
  return Formats::sentence(
      "An overlay cannot be called {1}, because the list of overlays has an entry of that name; choose another name.",
      nameInQuotes(name));
}

std::vector<std::u16string> overlayNames(SelectorNode& list, std::int32_t except) {
  std::vector<std::u16string> names;
  for (std::int32_t i = 0; i < list.items().count(); ++i) {
    const auto item = list.items().at(i);
    if (i != except && isOverlay(*item) && !item->isMarked()) names.push_back(item->text().str());
  }
  return names;
}

void renameOverlay(Preferences& preferences, std::int32_t index, const std::u16string& name) {
  SelectorNode* const list = overlayList(preferences);
  const auto item = list == nullptr ? Kiln::SmartPtr<Kiln::XUL::ListItem>() : list->items().at(index);
  if (!item || !isOverlay(*item)) throw std::runtime_error(Formats::sentence("There is no such overlay."));
  checkName(preferences, *list, index, name);
  const Formats::IndexEntry overlay{item->text().str(), item->value().str()};
  const std::u16string stored = Formats::storableName(name);
  if (stored == overlay.name) return;
  preferences.actions().act({"rename-overlay", {name}, OwnText::argument}, [&] {
    Files::Disk& disk = preferences.options().disk == nullptr ? Files::realDisk() : *preferences.options().disk;
    FileChanges changes;
    {
      const Files::HomeLock lock(disk, preferences.home(), preferences.options().longestWait);
      Files::completeFileSet(disk, importJournal(preferences.home()));
      changes = renameInIndex(disk, userIndex(preferences), overlay, stored);
    }
    // One step to undo: the settings that name the overlay, and the index.
    preferences.dispatch([&] {
      followInSettings(preferences.model(), overlay, stored);
      preferences.takeUpFiles(changes);
    });
  });
}

}  // namespace Refhost
