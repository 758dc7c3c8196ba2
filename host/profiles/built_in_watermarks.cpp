#include "host/profiles/built_in_watermarks.h"

#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/documents/documents.h"
#include "host/profiles/merge.h"
#include "host/profiles/profile.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>
#include <stdexcept>

namespace Refhost {
namespace {

Kiln::SmartPtr<Node> builtIns(const Preferences& preferences) {
  const auto file = preferences.chrome().file(Formats::Address::builtInWatermarks);
  if (!file)
    throw std::runtime_error(Formats::sentence("The built-in watermarks cannot be read: install the program again."));
  return readWatermarks(Files::realDisk().read(*file, documentLimits.bytes), Files::shownPath(*file));
}

std::set<std::u16string> idsIn(const Node& root) {
  std::set<std::u16string> ids;
  for (const auto& record : root.children()) {
    ids.insert(record->localNameText());
    ids.insert(idOfRecord(*record));
  }
  return ids;
}

// Null for none.
Kiln::SmartPtr<Node> readUserFile(const FileContent& present, const std::filesystem::path& file) {
  return present ? readWatermarks(*present, Files::shownPath(file)) : Kiln::SmartPtr<Node>();
}

// The file's content with the records added.
std::string withRecords(Node& present, const std::vector<Kiln::SmartPtr<Node>>& added, const StringTables& strings) {
  std::set<std::u16string> names;
  for (const auto& record : present.children()) names.insert(strings.resolve(nameOfRecord(*record)));
  for (const auto& each : added) {
    const auto record = each->copy();
    const std::u16string name = strings.resolve(nameOfRecord(*record));
    std::u16string free = name;
    for (int number = 2; !names.insert(free).second; ++number)
      free = numbered(name, number, std::numeric_limits<std::size_t>::max());
    if (free != name) record->childOrNew(Formats::Field::stylename)->setValue(free);
    present.append(record);
  }
  return watermarkBytes(present);
}

// Whether the host settings hide all of them from the user.
bool areHidden(const Preferences& preferences) {
  constexpr int hiding = 2;
  const std::string text = Formats::toUtf8(preferences.setting(Formats::Setting::defaultUserDataHide).value_or(u""));
  int bits = 0;
  std::from_chars(text.data(), text.data() + text.size(), bits);
  return (bits & hiding) != 0;
}

}  // namespace

std::vector<BuiltInWatermark> missingBuiltIns(Preferences& preferences) {
  if (areHidden(preferences)) return {};
  Files::Disk& disk = Files::realDisk();
  const std::filesystem::path file = ProfileHome::of(preferences).watermarkFile;
  FileContent bytes;
  if (disk.kind(file) != Files::EntryKind::none) bytes = disk.read(file, documentLimits.bytes);
  const auto present = readUserFile(bytes, file);
  if (!present || present->children().empty()) return {};
  const std::set<std::u16string> ids = idsIn(*present);
  std::vector<BuiltInWatermark> missing;
  const auto all = builtIns(preferences);
  for (const auto& record : all->children())
    if (const std::u16string id = idOfRecord(*record); !ids.contains(id))
      missing.push_back({id, preferences.strings().resolve(nameOfRecord(*record))});
  return missing;
}

void restoreBuiltIns(Preferences& preferences, const std::vector<std::u16string>& ids) {
  const std::filesystem::path file = ProfileHome::of(preferences).watermarkFile;
  preferences.actions().act({"restore-watermarks", ids}, [&] {
    preferences.changeFile(file, [&](const FileContent& present) {
      const auto root = readUserFile(present, file);
      if (!root)
        throw std::runtime_error(
            Formats::sentence("There is no file of watermarks to add them to: open the preferences again."));
      const std::set<std::u16string> known = idsIn(*root);
      std::vector<Kiln::SmartPtr<Node>> added;
      const auto all = builtIns(preferences);
      for (const auto& record : all->children()) {
        const std::u16string id = idOfRecord(*record);
        if (std::ranges::find(ids, id) != ids.end() && !known.contains(id)) added.push_back(record);
      }
      return added.empty() ? *present : withRecords(*root, added, preferences.strings());
    });
  });
}

}  // namespace Refhost
