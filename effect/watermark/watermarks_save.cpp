// Writing the store's files, merged with other processes' changes.
#include "effect/changed_files.h"
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
    untilFilesStay([this] { writeDue(); });
  } catch (const Kiln::Exception&) {
    // Some may have been written: their content must be read before they are overwritten.
    for (const Text& path : due) fileAt(path).forget();
    setBack();
    throw;
  }
  for (auto& [path, kept] : overruled)
    std::erase_if(kept, [this](const OverruledRecord& record) { return isReplaced(record); });
  due.clear();
  before.clear();
  replacedNames.clear();
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
  replacedNames.clear();
}

void Watermarks::writeDue() {
  std::set<Text> readable;
  for (const Text& path : due)
    attempt(path, [&] {
      takeUpOthersChanges(path);
      readable.insert(path);
    });
  const Groups all = groups();
  writeMergedCopy(all);
  for (const Text& path : dueInOrder(all)) {
    if (!readable.contains(path) || left.contains(path)) continue;
    const auto group = all.find(path);
    attempt(path,
            [&] { fileAt(path).write(document(path, group == all.end() ? std::vector<Text>() : group->second)); });
  }
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

// The whole store as in memory, for inspection; never read here, and not written without the records of files that
// could not be read. A failure to write this copy does not fail the user's change, and is not told: local data may be
// read-only.
void Watermarks::writeMergedCopy(const Groups& all) {
  if (all.size() < 2 || !mergeFolder || !isComplete()) return;
  const auto path = mergeFolder->join(watermarkFileName);
  try {
    if (due.empty() && path->exists()) return;
    const Node root = newElement(host, rootName);
    for (const auto& [id, record] : records) root->setChild(id, record->clone());
    host.documents()->write(root, host.file(path));
  } catch (const Kiln::Exception&) {
    return;
  }
}

// The records of a file as stored, after the NoneRecord, which every file has: those that are shown, and those that
// reading has overruled.
Node Watermarks::document(const Text& path, const std::vector<Text>& recordIds) const {
  std::map<Text, Node> elements;
  for (const Text& id : recordIds)
    if (id != noneId) elements.emplace(id, asWritten(*record(id)));
  if (const auto kept = overruled.find(path); kept != overruled.end())
    for (const OverruledRecord& each : kept->second)
      if (!isReplaced(each)) elements.emplace(elementOf(each, path, elements), each.node->clone());

  const Node root = newElement(host, rootName);
  root->setChild(noneId, asWritten(*makeNoneRecord()));
  for (const auto& [name, element] : elements) root->setChild(name, element);
  return root;
}

// A free name for the element of an overruled record. In one file with the record that is shown for it, it is read
// before that, so that it is overruled again; once they have different names, after it, so that the id stays with the
// record that is shown.
std::u16string Watermarks::elementOf(const OverruledRecord& overruledOne, const Text& path,
                                     const std::map<Text, Node>& taken) const {
  Text element = overruledOne.element;
  const Node shown = overruledOne.by.empty() ? Node() : record(overruledOne.by);
  if (shown && fieldText(*shown, Field::sourceFile).view() == path) {
    const bool isSameName =
        fieldText(*shown, Field::stylename).view() == fieldText(*overruledOne.node, Field::stylename).view();
    element = isSameName ? u"-" + overruledOne.by : overruledOne.by + u"-";
  }
  while (element == noneId || taken.contains(element)) element += u'-';
  return element;
}

void Watermarks::exportMerged(const Kiln::SmartPtr<Kiln::Services::Path>& to) {
  checkComplete();
  const Node root = newElement(host, rootName);
  for (const auto& [id, record] : records) root->setChild(id, asWritten(*record));
  host.documents()->write(root, host.file(to));
}

// While the store opens, an unwritable file must not keep the other files and the tab from opening. Only the user's own
// is told about: local data is often read-only.
void Watermarks::attempt(const Text& path, const std::function<void()>& work) {
  if (!isOpening) return work();
  try {
    work();
  } catch (const Kiln::FileChanged&) {
    throw;
  } catch (const Kiln::Exception& problem) {
    if (!isLocalData(path)) tellOnce(problem);
  }
}

// Saves a copy of a damaged user file under another name. When that fails, the file is not overwritten as long as this
// store lives.
void Watermarks::setAside(WatermarkFile& file, const Kiln::Exception& problem) {
  std::u16string copy;
  try {
    untilFilesStay([&] { copy = file.setAside()->text().str(); });
  } catch (const Kiln::Exception&) {
    block(file, problem);
  }
  host.tell(toUtf16(sentenceOf(problem)) + u" What was in it is kept in " + copy + u".");
}

// Keeps a file that could not be read, or of which no copy could be saved, from being overwritten. Throws.
void Watermarks::block(WatermarkFile& file, const Kiln::Exception& problem) const {
  const std::string sentence = sentenceOfBlocking(problem);
  file.block(sentence);
  throw Kiln::Exception(host.allocator(), sentence);
}

// Reports only the first failure, since a whole folder may be unwritable.
void Watermarks::tellOnce(const Kiln::Exception& problem) {
  if (!std::exchange(hasTold, true)) host.tell(toUtf16(sentenceOf(problem)));
}

WatermarkFile& Watermarks::fileAt(const Text& path) {
  const auto found = files.find(path);
  return found != files.end() ? found->second : files.try_emplace(path, host, host.path(path)).first->second;
}
