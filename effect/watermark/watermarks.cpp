// Opening and changing the store. watermarks_read.cpp reads its files, watermarks_save.cpp writes them.
#include "effect/watermark/watermarks.h"

#include "effect/changed_files.h"
#include "effect/settings.h"
#include "effect/watermark/numbers.h"

#include <algorithm>

using namespace Effect;

namespace {

constexpr std::int32_t hideBuiltInBit = 2;
constexpr std::size_t mostWatermarks = 20;

std::pair<std::u16string, std::u16string> nameAndId(Kiln::Dom::INode& record, const std::u16string& id) {
  return {fieldText(record, Field::stylename).str(), id};
}

}  // namespace

Watermarks::Watermarks(Kiln::Host& lender, const Kiln::PropertyManager& properties, bool isMergedAlready)
    : host(lender),
      merged(isMergedAlready) {
  const auto settings = properties->configuration();
  marksDownloaded = settingFlag(*settings, Setting::userDataSupport);
  hidesBuiltIn = (leadingInteger(settingText(*settings, Setting::defaultUserDataHide)) & hideBuiltInBit) != 0;
  const std::u16string userFolder = settingText(*settings, Setting::userPath);
  userPath = host.path(userFolder)->join(watermarkFileName)->text().str();
  if (userFolder.empty())
    fileAt(userPath).block("Watermarks cannot be kept: the host setting kilnworks.user.path is empty.");
  if (const auto localData = settings->child(Setting::localDataPath)) mergeFolder = host.path(localData->wideValue());
  put(Text(noneId), makeNoneRecord());

  if (readUserFile()) readLocalData();
  try {
    untilFilesStay([this] { writeDue(); });
  } catch (const Kiln::FileChanged&) {
    // The next change brings the files into the written form.
  }
  due.clear();
  left.clear();
  isOpening = false;
}

std::u16string Watermarks::addRecord(const Node& record) {
  Text id;
  changeTogether([&](Changes& changes) { id = changes.add(record); });
  return id;
}

// Stores the node, not a copy.
std::u16string Watermarks::add(const Node& record) {
  const Text name = fieldText(*record, Field::stylename).str();
  if (!isUsableName(name)) return {};
  Text id = fieldText(*record, Field::value).str();
  if (const Text same = findIdByName(name); !same.empty()) {
    id = same;
    replaceOverruled(name);
  } else if (id.empty() || id == noneId) {
    id = ids.nextFree([this](const Text& drawn) { return records.contains(drawn); });
  }
  complete(*record, id, false);
  change(id, record);
  return id;
}

bool Watermarks::updateRecord(std::u16string_view id, const Node& record) {
  changeTogether([&](Changes& changes) { changes.update(id, record); });
  return true;
}

bool Watermarks::removeRecord(std::u16string_view id) {
  bool isRemoved = false;
  changeTogether([&](Changes& changes) { isRemoved = changes.remove(id); });
  return isRemoved;
}

void Watermarks::Changes::update(std::u16string_view id, const Node& record) {
  if (!hasField(*record, Field::sourceFile)) setField(*record, Field::sourceFile, store.userPath);
  if (!hasField(*record, Field::value)) setField(*record, Field::value, id);
  // A record of the user's that had taken over another's id has it to itself under a name of its own.
  const Node old = store.record(id);
  const bool isRenamed = old && fieldText(*old, Field::stylename).view() != fieldText(*record, Field::stylename).view();
  if (isRenamed && !store.isLocalData(fieldText(*record, Field::sourceFile).str())) record->removeChild(Field::origId);
  store.change(Text(id), record);
}

bool Watermarks::Changes::remove(std::u16string_view id) {
  const Node old = id == noneId ? Node() : store.record(id);
  if (!old) return false;
  store.replaceOverruled(fieldText(*old, Field::stylename).view());
  store.change(Text(id), {});
  return true;
}

// The records of the name that are kept in their files go with the one that was shown for them: at the next opening
// they would be back.
void Watermarks::replaceOverruled(std::u16string_view name) {
  replacedNames.emplace(name);
  for (const auto& [path, kept] : overruled)
    if (std::any_of(kept.begin(), kept.end(), [this](const auto& record) { return isReplaced(record); }))
      due.insert(path);
}

bool Watermarks::isReplaced(const OverruledRecord& record) const {
  return !record.by.empty() && replacedNames.contains(fieldText(*record.node, Field::stylename).view());
}

// An empty `record` removes the existing one.
void Watermarks::change(const Text& id, const Node& record) {
  const Node old = this->record(id);
  if (!isOpening) before.try_emplace(id, old);
  if (old) due.insert(fieldText(*old, Field::sourceFile).str());
  if (record) due.insert(fieldText(*record, Field::sourceFile).str());
  put(id, record);
}

// Calls the host first, so that its exceptions leave the store unchanged.
void Watermarks::put(const Text& id, const Node& record) {
  const Node old = this->record(id);
  const auto oldName = old ? nameAndId(*old, id) : std::pair<Text, Text>();
  const bool isNamed = record && !isDownloaded(*record);
  const auto newName = isNamed ? nameAndId(*record, id) : std::pair<Text, Text>();

  if (old) namesAndIds.erase(oldName);
  if (record)
    records[id] = record;
  else
    records.erase(id);
  if (isNamed) namesAndIds.insert(newName);
}

void Watermarks::changeTogether(const std::function<void(Changes&)>& make) {
  forgetUnfinished();
  try {
    Changes changes(*this);
    make(changes);
  } catch (...) {
    setBack();
    throw;
  }
  if (!due.empty()) saveChanges();
}

std::u16string Watermarks::findIdByName(std::u16string_view stylename) const {
  const auto found = namesAndIds.lower_bound({Text(stylename), Text()});
  return found != namesAndIds.end() && found->first == stylename ? found->second : Text();
}

std::vector<std::u16string> Watermarks::idsOfName(std::u16string_view stylename) const {
  std::vector<Text> found;
  for (auto entry = namesAndIds.lower_bound({Text(stylename), Text()});
       entry != namesAndIds.end() && entry->first == stylename; ++entry)
    if (entry->second != noneId) found.push_back(entry->second);
  return found;
}

Node Watermarks::record(std::u16string_view id) const {
  const auto found = records.find(id);
  return found == records.end() ? Node() : found->second;
}

bool Watermarks::isFull() const {
  std::size_t count = 0;
  for (const auto& [id, record] : records)
    if (id != noneId && !(hidesBuiltIn && isBuiltIn(id))) ++count;
  return count >= mostWatermarks;
}

void Watermarks::checkComplete() const {
  if (!unread.empty()) throw Kiln::Exception(host.allocator(), unread);
}

void Watermarks::fillList(Kiln::XUL::ListData& list, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const {
  fillWatermarkList(host, records, list, {marksDownloaded ? icon : nullptr, hidesBuiltIn});
}

Node Watermarks::makeNoneRecord() const { return noneRecord(host, userPath); }
