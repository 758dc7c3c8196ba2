// Writing the store's indexes, merged with other processes' changes, and its exports.
#include "effect/changed_files.h"
#include "effect/list_order.h"
#include "effect/overlay/overlays.h"

#include <algorithm>

using namespace Effect;

namespace {

// Equal for names that differ only in case.
std::u16string withoutCase(std::u16string name) {
  std::transform(name.begin(), name.end(), name.begin(), lowerCase);
  return name;
}

// Whether the record's file belongs to an overlay of another name.
bool isListedAsOther(const OverlayRecord& record, const std::vector<IndexEntry>& entries) {
  return std::ranges::any_of(entries, [&](const IndexEntry& entry) {
    return entry.fileName == record.diskpath && entry.name != storableName(record.label);
  });
}

}  // namespace

void Overlays::save() {
  if (changed.empty()) return;
  std::set<Text> indexes = changed;
  for (const OverlayRecord& record : records) indexes.insert(record.diskfile);
  for (const Text& index : indexes) {
    try {
      untilFilesStay([&] { write(index); });
    } catch (const Kiln::Exception&) {
      // Other indexes only lose entries of missing files; that can wait until they are writable.
      if (changed.contains(index)) throw;
    }
  }
  changed.clear();
  added.clear();
  removed.clear();
}

// Preserves entries that another process has added meanwhile.
void Overlays::write(const Text& index) {
  const auto path = host.path(index);
  const Kiln::String present = bytesOf(*path);
  const std::vector<IndexEntry> entries = readIndex(present.view());
  checkAdded(index, entries);
  take(present, *path, true);
  const std::string bytes = indexBytes(entriesOf(index, entries));
  if (bytes == present.view() && !changed.contains(index)) return;
  const auto store = host.file(path);
  store->write(bytes);
  store->commit();
}

// Two processes may draw the same file name at the same time. Then the one that comes second must draw again.
void Overlays::checkAdded(const Text& index, const std::vector<IndexEntry>& present) const {
  for (const OverlayRecord& record : records)
    if (record.diskfile == index && added.contains(record.path) && isListedAsOther(record, present))
      throw Kiln::Exception(host.allocator(), "Another program is creating an overlay with the same file; try again.");
}

// The records of an index in their order, and before each the overruled ones with its label, so that it overrules them
// when the index is read.
std::vector<IndexEntry> Overlays::entriesOf(const Text& index, const std::vector<IndexEntry>& present) const {
  std::map<Text, IndexEntry> own;  // those not written yet, by label
  for (const OverlayRecord& record : records)
    if (record.diskfile == index) own[storableName(record.label)] = {record.disklabel, record.diskpath};
  std::set<std::pair<Text, Text>> kept;
  for (const OverlayRecord& record : overruled)
    if (record.diskfile == index && mayBeFile(record.path)) kept.emplace(record.label, record.diskpath);
  const auto isWritten = [&](const IndexEntry& entry) {
    const auto found = own.find(entry.name);
    return kept.contains({entry.name, entry.fileName}) ||
           (found != own.end() && found->second.fileName == entry.fileName);
  };
  std::map<Text, std::size_t> last;  // the position of the last entry of each label
  for (std::size_t i = 0; i < present.size(); ++i)
    if (isWritten(present[i])) last[present[i].name] = i;

  std::vector<IndexEntry> entries;
  for (std::size_t i = 0; i < present.size(); ++i) {
    const IndexEntry& entry = present[i];
    if (kept.erase({entry.name, entry.fileName}) > 0) entries.push_back(entry);
    if (const auto position = last.find(entry.name); position == last.end() || position->second != i) continue;
    if (const auto record = own.extract(entry.name)) entries.push_back(record.mapped());
  }
  for (const OverlayRecord& record : records)
    if (record.diskfile == index)
      if (const auto rest = own.extract(storableName(record.label))) entries.push_back(rest.mapped());
  return entries;
}

void Overlays::copyIfThere(Kiln::Services::Path& file, const Kiln::SmartPtr<Kiln::Services::Path>& to) {
  if (isFile(file)) file.copyTo(to);
}

// Write the index last, so that it never lists files that were not copied.
void Overlays::exportTo(const Kiln::SmartPtr<Kiln::Services::Path>& folder) {
  checkComplete();
  std::vector<IndexEntry> entries;
  std::set<Text> taken;
  for (const OverlayRecord& record : records) {
    const auto file = host.path(record.path);
    if (!isFile(*file)) continue;  // not written by its job yet
    // A downloaded overlay may have the file name of one of the user's; some file systems ignore case.
    Text fileName = record.diskpath;
    while (!taken.insert(withoutCase(fileName)).second) fileName = freeFileName(*folder);
    copyIfThere(*host.path(thumbnailOf(record.path)), folder->join(thumbnailOf(fileName)));
    file->copyTo(folder->join(fileName));
    entries.push_back({record.disklabel, fileName});
  }
  const auto store = host.file(folder->join(overlayIndexName));
  store->write(indexBytes(entries));
  store->commit();
}
