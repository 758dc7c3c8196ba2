// The user's actions as steps: how they are run, undone and redone, and those that change everything at once.
#include "files/whole_file.h"
#include "host/documents/documents.h"
#include "host/kept_settings.h"
#include "host/preferences_run.h"
#include "host/profiles/home_import.h"

#include <utility>

namespace Refhost {
namespace {

// Properties that users may set, without context properties.
TracePairs userValuesOf(const PropertyModel& model) {
  TracePairs pairs = model.values();
  std::erase_if(pairs, [&model](const auto& pair) { return model.isContext(pair.first); });
  return pairs;
}

// The pairs of `wanted` that differ from the model.
TracePairs differences(const PropertyModel& model, const TracePairs& wanted) {
  TracePairs pairs;
  for (const auto& pair : wanted)
    if (model.value(pair.first) != pair.second) pairs.push_back(pair);
  return pairs;
}

}  // namespace

// What the host itself has written since the last action belongs to that: a driver writes the job that the plug-in has
// prepared.
void Preferences::Run::extendLatest() {
  if (past.isEmpty()) return;
  UndoStep step = past.takeLatest();
  step.files.add(*files.changes);
  if (!step.files.isComplete()) return past.clear();
  files.changes->clear();
  past.add(std::move(step));
}

void Preferences::Run::addStep(TracePairs before, const UserAction* action) {
  FileChanges changes = std::exchange(*files.changes, {});
  // Earlier values may not match files that cannot be restored.
  if (!changes.isComplete()) past.clear();
  if (!changes.isComplete() || (changes.isEmpty() && userValuesOf(model()) == before)) return;
  future.clear();
  past.add({std::move(before), std::move(changes), action == nullptr ? UserAction() : *action});
}

// Sets the values, and makes the plug-in read its stores again. The values are set before it does, and partly corrected
// by it; submitting them then runs the rules and fires the signals.
void Preferences::Run::takeUp(TracePairs values, const std::filesystem::path& target) {
  for (const auto& [name, value] : values) model().child(name)->setValue(value);
  fireImport(target);
  for (auto& [name, value] : values) value = *model().value(name);
  if (!values.empty()) model().submit(values);
}

// Throws ChangedSince and Files::DiskError without a change.
void Preferences::Run::goTo(const UndoStep& step, FileChanges::State state) {
  if (!step.files.isEmpty()) {
    const ChangeGuard::Lock lock = files.guard->lock(files.disk, home.path);
    step.files.restore(files.disk, importJournal(home.path), state);
  }
}

bool Preferences::canUndo() const { return !run->past.isEmpty(); }

bool Preferences::canRedo() const { return !run->future.isEmpty(); }

const UserAction* Preferences::nextToUndo() const {
  return run->past.isEmpty() ? nullptr : &run->past.latest()->action;
}

const UserAction* Preferences::nextToRedo() const {
  return run->future.isEmpty() ? nullptr : &run->future.latest()->action;
}

void Preferences::undo() {
  if (canUndo()) actions().act({"undo"}, [this] { travel(run->past, run->future, FileChanges::State::before); });
}

void Preferences::redo() {
  if (canRedo()) actions().act({"redo"}, [this] { travel(run->future, run->past, FileChanges::State::after); });
}

// Files that somebody has changed since are left alone, and nothing before them can be undone either. What fails for
// another reason may be tried again.
void Preferences::travel(UndoHistory& from, UndoHistory& to, FileChanges::State state) {
  UndoStep step = from.takeLatest();
  const TracePairs now = userValuesOf(run->model());
  bool isDone = false;
  bool isStale = false;
  run->isUndoable = false;
  dispatch([&] {
    try {
      run->goTo(step, state);
    } catch (const ChangedSince&) {
      isStale = true;
      throw;
    }
    isDone = true;
    const TracePairs values = differences(run->model(), step.values);
    if (step.files.isEmpty())
      run->model().submit(values);
    else
      run->takeUp(values, {});
  });
  run->isUndoable = true;
  // A plug-in may write files when it reads its stores again.
  const FileChanges further = std::exchange(*run->files.changes, {});
  if (isStale || !further.isComplete()) {
    from.clear();
    to.clear();
  } else if (isDone) {
    to.add({now, std::move(step.files), std::move(step.action)});
    to.extend(state, further);
    from.extend(state == FileChanges::State::before ? FileChanges::State::after : FileChanges::State::before, further);
  } else {
    from.add(std::move(step));
  }
  if (onHistory) onHistory();
}

void Preferences::restoreDefaults() {
  TracePairs defaults;
  for (const PropertyDescription& property : run->model().description().properties)
    if (!property.isContext) defaults.emplace_back(property.name, property.defaultValue);
  const TracePairs pairs = differences(run->model(), defaults);
  actions().act({"defaults"}, [&] {
    if (!pairs.empty()) dispatch([&] { run->model().submit(pairs); });
  });
}

TracePairs Preferences::userValues() const { return userValuesOf(run->model()); }

void Preferences::apply(const TracePairs& values) {
  const TracePairs pairs = differences(run->model(), applicable(values, run->model().description()));
  if (!pairs.empty()) dispatch([&] { run->model().submit(pairs); });
}

void Preferences::loadTicketFile(const std::filesystem::path& file) {
  actions().act({"load-ticket", {Files::pathText(file)}, OwnText::argument},
                [&] { loadTicket(Files::realDisk().read(file, documentLimits.bytes), Files::shownPath(file)); });
}

void Preferences::loadTicket(std::string_view document, const std::string& source) {
  const TracePairs before = userValues();
  const std::string sentence = run->failures.sentenceOf(
      [&] { run->host.ticketDocuments().load(run->ticketPlugin(), run->model(), document, source); });
  if (!sentence.empty()) throw std::runtime_error(sentence);
  TracePairs loaded;
  for (const auto& [name, value] : before)
    if (const auto now = *run->model().value(name); now != value) loaded.emplace_back(name, now);
  if (loaded.empty()) return;
  // The values are set already; submitting them runs the rules and fires the signals.
  dispatch([&] { run->model().submit(loaded); }, before);
}

void Preferences::writeJob(std::string_view bytes, std::optional<std::string_view> picture) {
  run->destination.write(bytes, picture);
  if (run->actions == 0) run->extendLatest();
}

void Preferences::importProfile(const std::filesystem::path& target, const TracePairs& values,
                                const FileChanges& changes) {
  const TracePairs changed = differences(run->model(), applicable(values, run->model().description()));
  dispatch([&] {
    run->files.changes->add(changes);
    run->takeUp(changed, target);
  });
}

// The import signal is the contract's only one at which a plug-in reads its stores.
void Preferences::refreshStores() { takeUpFiles({}); }

void Preferences::takeUpFiles(const FileChanges& changes) {
  dispatch([&] {
    run->files.changes->add(changes);
    run->fireImport({});
  });
}

FileChanges Preferences::fileChanges() const {
  FileChanges all;
  for (const UndoStep& step : run->past.steps()) all.add(step.files);
  all.add(*run->files.changes);
  return all;
}

void Preferences::changeFile(const std::filesystem::path& file, const NewContent& change) {
  dispatch([&] {
    Files::Disk& disk = run->files.disk;
    {
      const ChangeGuard::Lock lock = run->files.guard->lock(disk, home());
      FileContent before;
      if (disk.kind(file) != Files::EntryKind::none) before = disk.read(file, FileChanges::mostBytes);
      std::string after = change(before);
      if (Files::replaceWhole(disk, file, after)) run->files.changes->add(file, std::move(before), std::move(after));
    }
    run->fireImport({});
  });
}

void Preferences::dispatch(const std::function<void()>& action) { dispatch(action, {}); }

void Preferences::dispatch(const std::function<void()>& action, std::optional<TracePairs> valuesBefore) {
  const bool outermost = run->actions == 0;
  TracePairs before;
  if (outermost) before = valuesBefore ? std::move(*valuesBefore) : userValues();
  if (outermost) run->files.changes->clear();
  ++run->actions;
  const std::string sentence = run->failures.sentenceOf(action);
  --run->actions;
  if (outermost) {
    run->files.guard->endAction();
    if (run->isUndoable) run->addStep(std::move(before), actions().outermost());
    if (onHistory) onHistory();
  }
  if (sentence.empty()) return;
  actions().failed(sentence);
  face.showFailure(sentence);
}

}  // namespace Refhost
