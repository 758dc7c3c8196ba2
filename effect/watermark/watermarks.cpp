// Opening and changing the store. watermarks_save.cpp writes it.
#include "effect/watermark/watermarks.h"

#include "effect/local_data.h"
#include "effect/sentence.h"
#include "effect/settings.h"
#include "effect/watermark/numbers.h"

using namespace Effect;

namespace {

constexpr std::int32_t hideBuiltInBit = 2;
constexpr std::size_t mostWatermarks = 20;

std::pair<std::u16string, std::u16string> nameAndId(Kiln::Dom::INode& record, const std::u16string& id) {
  return {fieldText(record, Field::stylename).str(), id};
}

// Names a record without a name by its text.
void nameByLabel(Kiln::Dom::INode& record) {
  if (!hasField(record, Field::stylename) && hasField(record, Field::label))
    setField(record, Field::stylename, fieldText(record, Field::label));
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
  writeDue();
  due.clear();
  isOpening = false;
}

// False when nothing more must be read.
bool Watermarks::readUserFile() {
  try {
    if (readUserFileOnce()) return true;
    fileAt(userPath).copyFrom(Address::builtInWatermarks);
    return readUserFileOnce();
  } catch (const Kiln::Exception& problem) {
    tellOnce(problem);
    return true;
  }
}

bool Watermarks::readUserFileOnce() {
  WatermarkFile& file = fileAt(userPath);
  file.refuseIfBlocked();
  Node root;
  try {
    root = file.read();
  } catch (const Kiln::Exception& problem) {
    setAside(file, problem);
  }
  return root && addAll(*root, userPath);
}

void Watermarks::readLocalData() {
  if (!mergeFolder || !mergeFolder->exists()) return;
  Folders folders;
  attempt([&] { folders = localDataFolders(*mergeFolder); });
  merged = merged || isMergedData(*mergeFolder, folders);
  for (const auto& folder : folders) {
    const Text path = folder->join(watermarkFileName)->text().str();
    try {
      if (const Node root = fileAt(path).read()) addAll(*root, path);
    } catch (const Kiln::Exception&) {
      // The user cannot fix local data; leave the file unchanged.
    }
  }
}

// False when there is no record below the root, whether or not any was added.
bool Watermarks::addAll(Kiln::Dom::INode& root, const Text& path) {
  const std::vector<Node> found = recordsOf(root);
  std::set<Text> idsInFile;
  for (const Node& record : found) {
    prepare(*record, path);
    // Of two records with the same id the second gets a new one, so that both are kept.
    if (const Kiln::WString id = fieldText(*record, Field::value); !id.empty() && !idsInFile.insert(id.str()).second)
      record->removeChild(Field::value);
    add(record, isLocalData(path));
  }
  return !found.empty();
}

// Prepares a record of a file for the store: ignores the file's values of the in-memory fields.
void Watermarks::prepare(Kiln::Dom::INode& record, const Text& path) const {
  stripMemoryFields(record);
  setField(record, Field::sourceFile, path);
  nameByLabel(record);
  if (const Node defaults = record.child(Field::defaultSetting)) nameByLabel(*defaults);
}

std::u16string Watermarks::addRecord(const Node& record) {
  Text id;
  changeTogether([&](Changes& changes) { id = changes.add(record); });
  return id;
}

// Stores the node, not a copy.
std::u16string Watermarks::add(const Node& record, bool isFromLocalData) {
  const Text name = fieldText(*record, Field::stylename).str();
  if (!isUsableName(name)) return {};
  Text id = fieldText(*record, Field::value).str();
  if (const Text same = findIdByName(name); !same.empty())
    id = same;
  else if (id.empty() || id == noneId)
    id = ids.nextFree([this](const Text& drawn) { return records.contains(drawn); });
  if (isFromLocalData && marksDownloaded) id += downloadedEnding;
  complete(*record, id, isFromLocalData);
  change(id, record);
  return id;
}

// Sets the fields that every record of the store has.
void Watermarks::complete(Kiln::Dom::INode& record, const Text& id, bool isFromLocalData) const {
  const Kiln::WString source = fieldText(record, Field::sourceFile);
  const Kiln::WString idInItsFile = fieldText(record, Field::value);
  if (fieldText(record, Field::fontname).empty()) setField(record, Field::fontname, defaultFace(host));
  setField(record, Field::value, id);
  setField(record, Field::downloaded, isFromLocalData && marksDownloaded ? Value::yes : Value::no);

  // These come last, so that the merged copy has the same bytes whether or not the file was in the written form.
  stripMemoryFields(record);
  setField(record, Field::sourceFile, source.empty() ? Kiln::WStringView(userPath) : source);
  if (!isFromLocalData) return;
  setField(record, Field::origId, idInItsFile);
  setField(record, Field::origName, fieldText(record, Field::stylename));
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
  store.change(Text(id), record);
}

bool Watermarks::Changes::remove(std::u16string_view id) {
  if (id == noneId || !store.records.contains(id)) return false;
  store.change(Text(id), {});
  return true;
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

void Watermarks::fillList(Kiln::XUL::ListData& list, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const {
  fillWatermarkList(host, records, list, {marksDownloaded ? icon : nullptr, hidesBuiltIn});
}

Node Watermarks::makeNoneRecord() const { return noneRecord(host, userPath); }
