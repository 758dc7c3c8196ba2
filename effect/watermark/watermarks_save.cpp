// Writing the store's files, merged with other processes' changes.
#include "effect/sentence.h"
#include "effect/watermark/watermarks.h"

#include <algorithm>

using namespace Effect;

namespace {

constexpr Name rootName = u"Watermarks";

}  // namespace

bool Watermarks::save() {
  forgetUnfinished();
  saveChanges();
  return true;
}

void Watermarks::saveChanges() {
  try {
    writeDue();
  } catch (const Kiln::Exception&) {
    // Some may have been written: their content must be read before they are overwritten.
    for (const Text& path : due) fileAt(path).forget();
    setBack();
    throw;
  }
  due.clear();
  before.clear();
}

// Another compiler's exception does not run this library's destructors and handlers: undo an interrupted change when
// the next one begins.
void Watermarks::forgetUnfinished() {
  if (before.empty() && due.empty()) return;
  setBack();
  for (auto& [path, file] : files) file.forget();
}

// Reverts the unsaved changes.
void Watermarks::setBack() {
  for (const auto& [id, record] : before) put(id, record);
  before.clear();
  due.clear();
}

void Watermarks::writeDue() {
  std::set<Text> readable;
  for (const Text& path : due)
    attempt([&] {
      takeUpOthersChanges(path);
      readable.insert(path);
    });
  const Groups all = groups();
  writeMergedCopy(all);
  for (const Text& path : dueInOrder(all)) {
    if (!readable.contains(path)) continue;
    const auto group = all.find(path);
    attempt([&] { fileAt(path).write(document(group == all.end() ? std::vector<Text>() : group->second)); });
  }
}

// Merges in changes that others have made to the file since it was last read or written here. Records changed here win;
// for all others the file wins, including additions and removals.
void Watermarks::takeUpOthersChanges(const Text& path) {
  WatermarkFile& file = fileAt(path);
  file.refuseIfBlocked();
  Node root;
  try {
    root = file.readIfChanged();
  } catch (const Kiln::Exception& problem) {
    if (isLocalData(path)) throw;
    setAside(file, problem);
  }
  if (root) takeUp(*root, path);
}

void Watermarks::takeUp(Kiln::Dom::INode& root, const Text& path) {
  std::set<Text> there;
  for (const Node& record : recordsOf(root)) {
    prepare(*record, path);
    const Text id = idInFile(*record, path);
    if (id == noneId || !isUsableName(fieldText(*record, Field::stylename).view())) continue;
    there.insert(id);
    const Node known = this->record(id);
    const Text source = known ? fieldText(*known, Field::sourceFile).str() : path;
    if (before.contains(id) || (source != path && isStillIn(source, id))) continue;
    complete(*record, id, isLocalData(path));
    put(id, record);
  }
  if (there.empty()) return;  // a file without records does not count as removals
  const Groups all = groups();
  const auto own = all.find(path);
  if (own == all.end()) return;
  for (const Text& id : own->second)
    if (id != noneId && !there.contains(id) && !before.contains(id)) put(id, {});
}

// Whether the record is still in the file that it was read from: a record being moved may already be in its new file
// when the move fails at the end. If unreadable, assume true.
bool Watermarks::isStillIn(const Text& path, const Text& id) const {
  try {
    const Node root = WatermarkFile(host, host.path(path)).read();
    if (!root) return false;
    const std::vector<Node> there = recordsOf(*root);
    return std::any_of(there.begin(), there.end(), [&](const Node& record) { return idInFile(*record, path) == id; });
  } catch (const Kiln::Exception&) {
    return true;
  }
}

// In a file written by a store, a record's element is named by its id. In other files the id may lack the downloaded
// suffix.
std::u16string Watermarks::idInFile(Kiln::Dom::INode& record, const Text& path) const {
  Text id = record.name().str();
  if (isLocalData(path) && marksDownloaded && !id.ends_with(downloadedEnding)) id += downloadedEnding;
  return id;
}

Watermarks::Groups Watermarks::groups() const {
  Groups all;
  for (const auto& [id, record] : records) all[fieldText(*record, Field::sourceFile).str()].push_back(id);
  return all;
}

// In path order, but with files that only lose records last, so that a record moving between files is in one of them at
// any time.
std::vector<std::u16string> Watermarks::dueInOrder(const Groups& all) const {
  std::vector<Text> paths(due.begin(), due.end());
  std::stable_partition(paths.begin(), paths.end(), [&](const Text& path) {
    const auto group = all.find(path);
    return before.empty() ||
           (group != all.end() && std::any_of(group->second.begin(), group->second.end(),
                                              [this](const Text& id) { return before.contains(id); }));
  });
  return paths;
}

// The whole store as in memory, for inspection; never read here. A failure to write this copy does not fail the user's
// change.
void Watermarks::writeMergedCopy(const Groups& all) {
  if (all.size() < 2 || !mergeFolder) return;
  const auto path = mergeFolder->join(watermarkFileName);
  if (due.empty() && path->exists()) return;
  const Node root = newElement(host, rootName);
  for (const auto& [id, record] : records) root->setChild(id, record->clone());
  try {
    host.documents()->write(root, host.file(path));
  } catch (const Kiln::Exception& problem) {
    tellOnce(problem);
  }
}

// The records of a file as stored, after the NoneRecord, which every file has.
Node Watermarks::document(const std::vector<Text>& recordIds) const {
  const Node root = newElement(host, rootName);
  root->setChild(noneId, asWritten(*makeNoneRecord()));
  for (const Text& id : recordIds)
    if (id != noneId) root->setChild(id, asWritten(*record(id)));
  return root;
}

void Watermarks::exportMerged(const Kiln::SmartPtr<Kiln::Services::Path>& to) {
  const Node root = newElement(host, rootName);
  for (const auto& [id, record] : records) root->setChild(id, asWritten(*record));
  host.documents()->write(root, host.file(to));
}

// While the store opens, an unwritable file must not keep the other files and the tab from opening.
void Watermarks::attempt(const std::function<void()>& work) {
  if (!isOpening) return work();
  try {
    work();
  } catch (const Kiln::Exception& problem) {
    tellOnce(problem);
  }
}

// Saves a copy of a damaged user file under another name. When that fails, the file is not overwritten as long as this
// store lives.
void Watermarks::setAside(WatermarkFile& file, const Kiln::Exception& problem) {
  std::u16string copy;
  try {
    copy = file.setAside()->text().str();
  } catch (const Kiln::Exception&) {
    const std::string sentence = sentenceOfBlocking(problem);
    file.block(sentence);
    throw Kiln::Exception(host.allocator(), sentence);
  }
  host.tell(toUtf16(sentenceOf(problem)) + u" What was in it is kept in " + copy + u".");
}

// Reports only the first failure, since a whole folder may be unwritable.
void Watermarks::tellOnce(const Kiln::Exception& problem) {
  if (!std::exchange(hasTold, true)) host.tell(toUtf16(sentenceOf(problem)));
}

WatermarkFile& Watermarks::fileAt(const Text& path) {
  const auto found = files.find(path);
  return found != files.end() ? found->second : files.try_emplace(path, host, host.path(path)).first->second;
}
