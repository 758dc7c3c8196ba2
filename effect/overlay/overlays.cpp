#include "effect/overlay/overlays.h"

#include "effect/list_order.h"
#include "effect/local_data.h"
#include "effect/sentence.h"
#include "effect/settings.h"

#include <algorithm>
#include <chrono>

using namespace Effect;

namespace {

constexpr std::int32_t mostOverlays = 20;
constexpr unsigned fileNumbers = 100'000;

// A limit on damaged or hostile indexes.
constexpr std::size_t mostRecords = 100'000;

std::uint32_t timeSeed() {
  return static_cast<std::uint32_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

bool isFile(Kiln::Services::Path& path) { return path.exists() && !path.isFolder(); }

// Equal for names that differ only in case.
std::u16string withoutCase(std::u16string name) {
  std::transform(name.begin(), name.end(), name.begin(), lowerCase);
  return name;
}

void copyIfThere(Kiln::Services::Path& file, const Kiln::SmartPtr<Kiln::Services::Path>& to) {
  if (isFile(file)) file.copyTo(to);
}

}  // namespace

Overlays::Overlays(Kiln::Host& lender, const Kiln::PropertyManager& properties, bool isMergedAlready)
    : host(lender),
      random(timeSeed()),
      merged(isMergedAlready) {
  const auto settings = properties->configuration();
  marksDownloaded = settingFlag(*settings, Setting::userDataSupport);
  const Text profile = settingText(*settings, Setting::userProfile);
  const Text folder = settingText(*settings, Setting::settingsFolder);
  indexPath = host.path(profile)->join(folder)->join(overlayIndexName);
  if (profile.empty())
    blocked[indexPath->text().str()] = "Overlays cannot be kept: the host setting kilnworks.user.userprofile is empty.";
  else
    readOrBlock(*indexPath, false);
  if (const auto localData = settings->child(Setting::localDataPath)) mergeFolder = host.path(localData->wideValue());
  readLocalData(folder);
}

void Overlays::readLocalData(Name settingsFolder) {
  if (!mergeFolder || !mergeFolder->exists()) return;
  Folders folders;
  try {
    folders = localDataFolders(*mergeFolder);
  } catch (const Kiln::Exception&) {
    // The user cannot fix local data.
  }
  merged = merged || isMergedData(*mergeFolder, folders);
  const Kiln::WString lastPart = host.path(settingsFolder)->lastPart();
  for (const auto& folder : folders) readOrBlock(*folder->join(lastPart)->join(overlayIndexName), true);
}

// Never overwrite an unreadable index: its entries would be lost.
void Overlays::readOrBlock(Kiln::Services::Path& index, bool isFromLocalData) {
  try {
    take(bytesOf(index), index, false);
  } catch (const Kiln::Exception& problem) {
    const std::string sentence = sentenceOfBlocking(problem);
    blocked[index.text().str()] = sentence;
    if (!isFromLocalData) host.tell(toUtf16(sentence));
  }
}

Kiln::String Overlays::bytesOf(Kiln::Services::Path& index) const {
  if (!index.exists()) return {};
  Kiln::String bytes = host.file(&index)->readAll();
  if (bytes.size() / indexRecordBytes > mostRecords)
    throw Kiln::Exception(host.allocator(), "The overlay index " + toValidUtf8(index.text().view()) +
                                                " lists more than 100000 overlays.");
  return bytes;
}

void Overlays::take(Kiln::StringView bytes, Kiln::Services::Path& index, bool keepsKnown) {
  const Text diskfile = index.text().str();
  const bool downloaded = isDownloaded(diskfile);
  const auto folder = index.folder();
  for (const IndexEntry& entry : readIndex(bytes.view())) {
    if (!isOverlayFileName(entry.fileName) || (keepsKnown && findByLabel(entry.name, downloaded) >= 0)) continue;
    const auto file = folder->join(entry.fileName);
    if (isFile(*file)) put({entry.name, entry.name, entry.fileName, file->text().str(), diskfile, downloaded});
  }
}

// Of records with the same label the last one wins, at the position of the first.
void Overlays::put(OverlayRecord record) {
  const auto [known, isNew] = byLabel.try_emplace({record.label, record.downloaded}, records.size());
  if (isNew)
    records.push_back(std::move(record));
  else
    records[known->second] = std::move(record);
}

// Removes every record of that file: an index from outside may list it under several names.
void Overlays::erase(const Text& path) {
  std::erase_if(records, [&](const OverlayRecord& record) {
    if (record.path == path) changed.insert(record.diskfile);
    return record.path == path;
  });
  byLabel.clear();
  for (std::size_t i = 0; i < records.size(); ++i) byLabel[{records[i].label, records[i].downloaded}] = i;
}

bool Overlays::isDownloaded(std::u16string_view index) const {
  return marksDownloaded && index != indexPath->text().view();
}

bool Overlays::isFull() const { return count() >= mostOverlays; }

std::int32_t Overlays::findByLabel(std::u16string_view label, bool downloaded) const {
  const auto found = byLabel.find({Text(label), downloaded});
  return found == byLabel.end() ? -1 : static_cast<std::int32_t>(found->second);
}

std::int32_t Overlays::findByDiskPath(std::u16string_view fileName) const {
  const auto found = std::find_if(records.begin(), records.end(),
                                  [fileName](const OverlayRecord& record) { return record.diskpath == fileName; });
  if (found == records.end()) throw Kiln::Exception(host.allocator(), "Cannot find overlay " + toValidUtf8(fileName));
  return static_cast<std::int32_t>(found - records.begin());
}

const OverlayRecord* Overlays::find(std::u16string_view fileName, bool downloaded) const {
  const auto found = std::find_if(records.begin(), records.end(), [&](const OverlayRecord& record) {
    return record.diskpath == fileName && (!marksDownloaded || record.downloaded == downloaded);
  });
  return found == records.end() ? nullptr : &*found;
}

std::u16string Overlays::pathOf(std::u16string_view fileName, bool downloaded) const {
  const OverlayRecord* record = find(fileName, downloaded);
  return record == nullptr ? Text(Value::none) : record->path;
}

void Overlays::refresh() {
  if (!blocked.contains(indexPath->text().str())) take(bytesOf(*indexPath), *indexPath, true);
}

std::u16string Overlays::addOverlay(std::u16string_view label) {
  const std::int32_t known = findByLabel(label, false);
  const Text index = known >= 0 ? record(known).diskfile : indexPath->text().str();
  if (const auto why = blocked.find(index); why != blocked.end()) throw Kiln::Exception(host.allocator(), why->second);
  if (known < 0) {
    const auto folder = indexPath->folder();
    const Text fileName = freeFileName(*folder);
    const Text path = folder->join(fileName)->text().str();
    put({Text(label), Text(label), fileName, path, index, false});
    added.insert(path);
  }
  changed.insert(index);
  return record(findByLabel(label, false)).path;
}

void Overlays::takeBack(std::u16string_view path) {
  if (added.erase(Text(path)) > 0) erase(Text(path));
}

// A file name that no file, record or leftover thumbnail uses. Random draws come first; the sequential search after
// them finds the last free names.
std::u16string Overlays::freeFileName(Kiln::Services::Path& folder) {
  constexpr unsigned drawn = 1000;
  unsigned number = 0;
  for (unsigned tries = 0; tries < drawn + fileNumbers; ++tries) {
    number = (tries < drawn ? static_cast<unsigned>(random()) : number + 1) % fileNumbers;
    Text name = overlayFileName(number);
    const auto file = folder.join(name);
    const bool isTaken = std::any_of(records.begin(), records.end(),
                                     [&](const OverlayRecord& record) { return record.path == file->text().view(); });
    if (!isTaken && !file->exists() && !folder.join(thumbnailOf(name))->exists()) return name;
  }
  throw Kiln::Exception(host.allocator(), "The folder " + toValidUtf8(folder.text().view()) +
                                              " has no name left for another overlay; delete files from it.");
}

bool Overlays::removeOverlay(std::u16string_view fileName, bool downloaded) {
  const Text path = pathOf(fileName, downloaded);
  if (path == Value::none) return false;
  const auto file = host.path(path);
  if (const auto thumbnail = host.path(thumbnailOf(path)); isFile(*thumbnail)) thumbnail->remove();
  const bool isDeleted = file->remove();
  erase(path);
  return isDeleted;
}

void Overlays::fillList(Kiln::XUL::ListData& list, bool withMultiple,
                        const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const {
  list.append(Token::noOverlay, Value::none);
  if (withMultiple) list.append(Token::multipleOverlays, Value::multiple);
  for (const OverlayRecord& record : records) {
    const auto item = list.append(record.label, record.diskpath);
    if (!record.downloaded) continue;
    item->setMarked(true);
    if (!icon) continue;
    item->setImage(icon);
    item->setColour(downloadedColour);
  }
}

void Overlays::save() {
  if (changed.empty()) return;
  std::set<Text> indexes = changed;
  for (const OverlayRecord& record : records) indexes.insert(record.diskfile);
  for (const Text& index : indexes) {
    try {
      write(index);
    } catch (const Kiln::Exception&) {
      // Other indexes only lose entries of missing files; that can wait until they are writable.
      if (changed.contains(index)) throw;
    }
  }
  changed.clear();
  added.clear();
}

// Preserves entries that another process has added meanwhile.
void Overlays::write(const Text& index) {
  const auto path = host.path(index);
  const Kiln::String present = bytesOf(*path);
  take(present, *path, true);
  std::vector<IndexEntry> entries;
  for (const OverlayRecord& record : records)
    if (record.diskfile == index) entries.push_back({record.disklabel, record.diskpath});
  const std::string bytes = indexBytes(entries);
  if (bytes == present.view() && !changed.contains(index)) return;
  const auto store = host.file(path);
  store->write(bytes);
  store->commit();
}

// Write the index last, so that it never lists files that were not copied.
void Overlays::exportTo(const Kiln::SmartPtr<Kiln::Services::Path>& folder) {
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
