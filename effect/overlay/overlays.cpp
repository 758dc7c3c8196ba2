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

}  // namespace

namespace Effect {

OverlayId idOf(Kiln::XUL::ListItem& overlay) {
  return {overlay.text().str(), overlay.value().str(), overlay.isMarked()};
}

}  // namespace Effect

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
  if (!mergeFolder) return;
  const LocalData localData = readFolders(*mergeFolder);
  if (localData.problem) note(*localData.problem);
  merged = merged || localData.isMerged;
  const Kiln::WString lastPart = host.path(settingsFolder)->lastPart();
  for (const auto& folder : localData.folders) readOrBlock(*folder->join(lastPart)->join(overlayIndexName), true);
}

// Remembers the first index that could not be read.
void Overlays::note(const Kiln::Exception& problem) {
  if (unread.empty()) unread = sentenceOf(problem);
}

// Never overwrite an unreadable index: its entries would be lost.
void Overlays::readOrBlock(Kiln::Services::Path& index, bool isFromLocalData) {
  try {
    take(bytesOf(index), index, false);
  } catch (const Kiln::Exception& problem) {
    note(problem);
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
  std::set<std::pair<Text, Text>> known;
  if (keepsKnown)
    for (const auto* all : {&records, &overruled})
      for (const OverlayRecord& record : *all)
        if (record.diskfile == diskfile) known.emplace(storableName(record.label), record.diskpath);
  for (const IndexEntry& entry : readIndex(bytes.view())) {
    if (!isOverlayFileName(entry.fileName) || known.contains({entry.name, entry.fileName})) continue;
    const auto file = folder->join(entry.fileName);
    OverlayRecord record{entry.name, entry.name, entry.fileName, file->text().str(), diskfile, downloaded};
    if (!mayBeFile(record.path) || (keepsKnown && removed.contains({record.label, record.path, diskfile}))) continue;
    if (keepsKnown && findByLabel(record.label, downloaded) >= 0)
      overruled.push_back(std::move(record));
    else
      put(std::move(record));
  }
}

// Of records with the same label the last one wins, at the position of the first.
void Overlays::put(OverlayRecord record) {
  const auto [known, isNew] = byLabel.try_emplace({record.label, record.downloaded}, records.size());
  if (isNew) {
    records.push_back(std::move(record));
    return;
  }
  OverlayRecord& place = records[known->second];
  if (place.path != record.path) overruled.push_back(std::move(place));
  place = std::move(record);
}

template <class IsMeant>
void Overlays::erase(const IsMeant& isMeant) {
  std::set<std::pair<Text, bool>> labels;
  std::erase_if(overruled, isMeant);
  std::erase_if(records, [&](const OverlayRecord& record) {
    if (!isMeant(record)) return false;
    changed.insert(record.diskfile);
    labels.emplace(record.label, record.downloaded);
    return true;
  });
  byLabel.clear();
  for (std::size_t i = 0; i < records.size(); ++i) byLabel[{records[i].label, records[i].downloaded}] = i;
  restoreOverruled(labels);
}

// Lists the last overruled record of each label that has none any more.
void Overlays::restoreOverruled(const std::set<std::pair<Text, bool>>& labels) {
  for (const auto& [label, downloaded] : labels) {
    const auto form = std::find_if(overruled.rbegin(), overruled.rend(), [&](const OverlayRecord& record) {
      return record.label == label && record.downloaded == downloaded && mayBeFile(record.path);
    });
    if (form == overruled.rend()) continue;
    put(std::move(*form));
    overruled.erase(std::next(form).base());
  }
}

// An overlay that cannot be examined is one: it must not disappear from its index.
bool Overlays::mayBeFile(const Text& path) const {
  try {
    return isFile(*host.path(path));
  } catch (const Kiln::Exception&) {
    return true;
  }
}

bool Overlays::isFile(Kiln::Services::Path& path) { return path.exists() && !path.isFolder(); }

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

const OverlayRecord* Overlays::find(const OverlayId& id) const {
  const std::int32_t known = findByLabel(id.label, id.downloaded);
  return known >= 0 && record(known).diskpath == id.fileName ? &record(known) : nullptr;
}

std::u16string Overlays::pathOf(const OverlayId& id) const {
  const OverlayRecord* record = find(id);
  return record == nullptr ? Text(Value::none) : record->path;
}

OverlayId Overlays::idOf(std::u16string_view fileName, std::u16string_view path) const {
  const OverlayRecord* chosen = nullptr;
  const auto rank = [path](const OverlayRecord& record) { return record.path == path ? 0 : record.downloaded ? 2 : 1; };
  for (const OverlayRecord& record : records)
    if (record.diskpath == fileName && (chosen == nullptr || rank(record) < rank(*chosen))) chosen = &record;
  return chosen == nullptr ? OverlayId() : OverlayId{chosen->label, chosen->diskpath, chosen->downloaded};
}

void Overlays::refresh() {
  if (!blocked.contains(indexPath->text().str())) take(bytesOf(*indexPath), *indexPath, true);
}

void Overlays::checkComplete() const {
  if (!unread.empty()) throw Kiln::Exception(host.allocator(), unread);
}

void Overlays::checkIndex() const { checkUnblocked(indexPath->text().str()); }

void Overlays::checkUnblocked(const Text& index) const {
  if (const auto why = blocked.find(index); why != blocked.end()) throw Kiln::Exception(host.allocator(), why->second);
}

std::u16string Overlays::addOverlay(std::u16string_view label) {
  const std::int32_t known = findByLabel(label, false);
  const Text index = known >= 0 ? record(known).diskfile : indexPath->text().str();
  checkUnblocked(index);
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
  if (added.erase(Text(path)) > 0) erase([path](const OverlayRecord& record) { return record.path == path; });
}

// A file name that no file, record, index entry or leftover thumbnail uses: another process may be about to write the
// file of an entry. Random draws come first; the sequential search after them finds the last free names.
std::u16string Overlays::freeFileName(Kiln::Services::Path& folder) {
  constexpr unsigned drawn = 1000;
  const std::vector<IndexEntry> entries = readIndex(bytesOf(*folder.join(overlayIndexName)).view());
  unsigned number = 0;
  for (unsigned tries = 0; tries < drawn + fileNumbers; ++tries) {
    number = (tries < drawn ? static_cast<unsigned>(random()) : number + 1) % fileNumbers;
    Text name = overlayFileName(number);
    const auto file = folder.join(name);
    const bool isTaken =
        std::ranges::any_of(records, [&](const auto& record) { return record.path == file->text().view(); }) ||
        std::ranges::any_of(entries, [&](const auto& entry) { return entry.fileName == name; });
    if (!isTaken && !file->exists() && !folder.join(thumbnailOf(name))->exists()) return name;
  }
  throw Kiln::Exception(host.allocator(), "The folder " + toValidUtf8(folder.text().view()) +
                                              " has no name left for another overlay; delete files from it.");
}

bool Overlays::removeOverlay(std::u16string_view fileName, bool downloaded) {
  const Text path = pathOf(fileName, downloaded);
  if (path == Value::none) return false;
  const bool isDeleted = deleteFiles(path);
  erase([&path](const OverlayRecord& record) { return record.path == path; });
  return isDeleted;
}

bool Overlays::removeOverlay(const OverlayId& id) {
  const OverlayRecord* found = find(id);
  if (found == nullptr) return false;
  const OverlayRecord meant = *found;
  const auto isOther = [&meant](const OverlayRecord& record) {
    return record.path == meant.path && record.label != meant.label;
  };
  const bool isShared = std::ranges::any_of(records, isOther) || std::ranges::any_of(overruled, isOther);
  const bool isDeleted = !isShared && deleteFiles(meant.path);
  if (isShared) removed.emplace(meant.label, meant.path, meant.diskfile);
  erase([&meant](const OverlayRecord& record) { return record.path == meant.path && record.label == meant.label; });
  return isDeleted;
}

bool Overlays::deleteFiles(const Text& path) {
  if (const auto thumbnail = host.path(thumbnailOf(path)); isFile(*thumbnail)) thumbnail->remove();
  return host.path(path)->remove();
}

bool Overlays::hasOtherForm(const OverlayId& id) const {
  const OverlayRecord* const known = find(id);
  return known != nullptr && std::ranges::any_of(overruled, [&](const OverlayRecord& record) {
           return record.label == id.label && record.downloaded == id.downloaded && record.path != known->path &&
                  mayBeFile(record.path);
         });
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
