// Reading the store's files: when it opens, and when others have changed them.
#include "effect/changed_files.h"
#include "effect/local_data.h"
#include "effect/sentence.h"
#include "effect/watermark/watermarks.h"

#include <algorithm>

using namespace Effect;

namespace {

// The one with that id and the record's name; null when there is none.
const OverruledRecord* sameIn(const std::vector<OverruledRecord>& kept, Kiln::Dom::INode& record,
                              const std::u16string& id) {
  const Kiln::WString name = fieldText(record, Field::stylename);
  const auto same = std::find_if(kept.begin(), kept.end(), [&](const OverruledRecord& each) {
    return each.id == id && fieldText(*each.node, Field::stylename).view() == name.view();
  });
  return same == kept.end() ? nullptr : &*same;
}

}  // namespace

// False when nothing more must be read.
bool Watermarks::readUserFile() {
  bool isCopying = false;
  try {
    bool isRead = false;
    untilFilesStay([&] {
      isRead = readUserFileOnce();
      isCopying = !isRead;
      if (isCopying) fileAt(userPath).copyFrom(Address::builtInWatermarks);
      isCopying = false;
    });
    return isRead || readUserFileOnce();
  } catch (const Kiln::Exception& problem) {
    tellOnce(problem);
    if (isCopying) readBuiltIn();
    return true;
  }
}

// Takes the built-in watermarks from where they came with the program: somebody whose home cannot be written can print
// them all the same. What is saved later goes into the user's file as ever, or fails as it does. A home with something
// else in place of the folder is damaged, and has no watermarks until that is mended.
void Watermarks::readBuiltIn() {
  try {
    const auto folder = host.path(userPath)->folder();
    if (folder->exists() && !folder->isFolder()) return;
    readAll(*host.documents()->read(host.resource(Address::builtInWatermarks)), userPath);
  } catch (const Kiln::Exception& problem) {
    note(problem);
  }
}

bool Watermarks::readUserFileOnce() {
  WatermarkFile& file = fileAt(userPath);
  file.refuseIfBlocked();
  Node root;
  try {
    root = file.read();
  } catch (const DamagedFile& problem) {
    setAside(file, problem);
  } catch (const Kiln::Exception& problem) {
    note(problem);
    block(file, problem);
  }
  return root && readAll(*root, userPath);
}

void Watermarks::readLocalData() {
  if (!mergeFolder) return;
  const LocalData localData = readFolders(*mergeFolder);
  if (localData.problem) {
    note(*localData.problem);
    if (!localData.isListed) tellOnce(*localData.problem);
  }
  merged = merged || localData.isMerged;
  for (const auto& folder : localData.folders) {
    const Text path = folder->join(watermarkFileName)->text().str();
    try {
      if (const Node root = fileAt(path).read()) readAll(*root, path);
    } catch (const DamagedFile&) {
      // The user cannot fix local data; leave the file unchanged.
    } catch (const Kiln::Exception& problem) {
      note(problem);
    }
  }
}

// Remembers the first file that could not be read.
void Watermarks::note(const Kiln::Exception& problem) {
  if (unread.empty()) unread = sentenceOf(problem);
}

// False when there is no record below the root, whether or not any was taken in.
bool Watermarks::readAll(Kiln::Dom::INode& root, const Text& path) {
  const auto found = fileRecords(root, path);
  for (const FileRecord& record : found) takeIn(record, path);
  return !found.empty();
}

// A record with the name of another takes its place and its id; the other one stays in its file. A record with the id
// of another, but a name of its own, gets another id.
void Watermarks::takeIn(const FileRecord& found, const Text& path) {
  if (!found.isUsable) return keep(found, path, {});
  const Text sameName = findIdByName(fieldText(*found.node, Field::stylename).view());
  Text id = withEnding(sameName.empty() ? found.id : sameName, path);
  if (const Node known = record(id)) {
    const Text source = fieldText(*known, Field::sourceFile).str();
    left.insert(source);
    if (isOverruled(*known, found, path)) {
      overruled[source].push_back({asWritten(*known), known->name().str(), idInItsFile(*known, id), id});
    } else {
      left.insert(path);
      id = otherId(found, path);
    }
  }
  settle(found, id, path);
  change(id, found.node);
}

bool Watermarks::isOverruled(Kiln::Dom::INode& known, const FileRecord& by, const Text& path) const {
  return isDownloaded(known) == marks(path) &&
         fieldText(known, Field::stylename).view() == fieldText(*by.node, Field::stylename).view();
}

std::u16string Watermarks::otherId(const FileRecord& found, const Text& path) const {
  const auto isTaken = [&](const Text& id) {
    const Text inMemory = withEnding(id, path);
    return records.contains(inMemory) || before.contains(inMemory);
  };
  return withEnding(otherIdOf(found, path, isTaken), path);
}

// Completes a record that was read. The user's file keeps its id there, where it has taken over another's.
void Watermarks::settle(const FileRecord& found, const Text& id, const Text& path) const {
  complete(*found.node, id, isLocalData(path));
  if (!isLocalData(path) && found.id != id) setField(*found.node, Field::origId, found.id);
}

// Sets the fields that every record of the store has.
void Watermarks::complete(Kiln::Dom::INode& record, const Text& id, bool isFromLocalData) const {
  const Kiln::WString source = fieldText(record, Field::sourceFile);
  const Kiln::WString value = fieldText(record, Field::value);
  if (fieldText(record, Field::fontname).empty()) setField(record, Field::fontname, defaultFace(host));
  setField(record, Field::value, id);
  setField(record, Field::downloaded, isFromLocalData && marksDownloaded ? Value::yes : Value::no);

  // These come last, so that the merged copy has the same bytes whether or not the file was in the written form.
  stripMemoryFields(record);
  setField(record, Field::sourceFile, source.empty() ? Kiln::WStringView(userPath) : source);
  if (!isFromLocalData) return;
  setField(record, Field::origId, value);
  setField(record, Field::origName, fieldText(record, Field::stylename));
}

// Keeps a record in its file that is not shown. The NoneRecord of a file is ignored.
void Watermarks::keep(const FileRecord& found, const Text& path, const Text& by) {
  if (!found.isUsable && found.element == noneId) return;
  stripMemoryFields(*found.node);
  overruled[path].push_back({found.node, found.element, found.id, by});
}

// Merges in changes that others have made to the file since it was last read or written here. Records changed here win;
// for all others the file wins, including additions and removals.
void Watermarks::takeUpOthersChanges(const Text& path) {
  WatermarkFile& file = fileAt(path);
  file.refuseIfBlocked();
  Node root;
  try {
    root = file.readIfChanged();
  } catch (const DamagedFile& problem) {
    if (isLocalData(path)) throw;
    setAside(file, problem);
  }
  if (root) takeUp(*root, path);
}

void Watermarks::takeUp(Kiln::Dom::INode& root, const Text& path) {
  const std::vector<FileRecord> all = fileRecords(root, path);
  const auto isUsable = [](const FileRecord& found) { return found.isUsable; };
  if (std::none_of(all.begin(), all.end(), isUsable)) return;  // a file without records does not count as removals
  const std::map<Text, Text> known = idsByIdInFile(path);
  const std::vector<OverruledRecord> kept = std::exchange(overruled[path], {});
  std::set<Text> there;
  for (const FileRecord& found : all) {
    const auto knownAs = known.find(found.id);
    const OverruledRecord* keptAs =
        found.isUsable && knownAs == known.end() ? sameIn(kept, *found.node, found.id) : nullptr;
    if (!found.isUsable || keptAs != nullptr) {
      keep(found, path, keptAs != nullptr ? keptAs->by : Text());
      continue;
    }
    const bool isAdded = knownAs == known.end();
    const auto id = isAdded ? idOfAdded(found, path) : knownAs->second;
    if (!id) {
      keep(found, path, withEnding(found.id, path));
      continue;
    }
    there.insert(*id);
    if (before.contains(*id)) continue;
    settle(found, *id, path);
    put(*id, found.node);
  }
  for (const auto& [idInFile, id] : known)
    if (!there.contains(id) && !before.contains(id)) put(id, {});
}

// The id of a record that others have added. It may have moved here from another file. Nothing where the record of
// another file stands for it.
std::optional<std::u16string> Watermarks::idOfAdded(const FileRecord& found, const Text& path) const {
  Text id = withEnding(found.id, path);
  const Node other = record(id);
  const bool isChanged = before.contains(id);
  const bool isFree = !other && !isChanged;
  if (isFree || (other && !isChanged && !isStillIn(fieldText(*other, Field::sourceFile).str(), id))) return id;
  if (other && isOverruled(*other, found, path)) return {};
  return otherId(found, path);
}

// The ids of a file's records, by their ids in the file; with those of records that are being removed from it.
std::map<std::u16string, std::u16string> Watermarks::idsByIdInFile(const Text& path) const {
  std::map<Text, Text> idsById;
  const auto add = [&](const Text& id, const Node& record) {
    if (record && id != noneId && fieldText(*record, Field::sourceFile).view() == path)
      idsById.try_emplace(idInItsFile(*record, id), id);
  };
  for (const auto& [id, record] : before) add(id, record);
  for (const auto& [id, record] : records) add(id, record);
  return idsById;
}

// Whether the record is still in the file that it was read from: a record being moved may already be in its new file
// when the move fails at the end. If unreadable, assume true.
bool Watermarks::isStillIn(const Text& path, const Text& id) const {
  try {
    const Node root = WatermarkFile(host, host.path(path)).read();
    if (!root) return false;
    const Text wanted = idInItsFile(*record(id), id);
    const auto there = fileRecords(*root, path);
    return std::any_of(there.begin(), there.end(), [&](const FileRecord& found) { return found.id == wanted; });
  } catch (const Kiln::Exception&) {
    return true;
  }
}

std::u16string Watermarks::idInItsFile(Kiln::Dom::INode& record, const Text& id) {
  const Text original = fieldText(record, Field::origId).str();
  if (!original.empty() || !isDownloaded(record)) return original.empty() ? id : original;
  return Text(idInFile(id, {}));
}

std::u16string Watermarks::withEnding(const Text& id, const Text& path) const {
  return marks(path) ? id + std::u16string(downloadedEnding) : id;
}
