#include "host/preferences.h"

#include "files/disk.h"
#include "files/temporary_folder.h"
#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/documents.h"
#include "host/home.h"
#include "host/job_destination.h"
#include "host/kept_settings.h"
#include "host/library.h"
#include "host/plugin_description.h"
#include "host/plugin_failures.h"
#include "host/profiles/profile_event.h"
#include "host/property_binding.h"
#include "host/reference_host.h"
#include "host/screen.h"
#include "host/undo_history.h"
#include "host/user_folders.h"

#include <stdexcept>

namespace Refhost {
namespace {

namespace Setting = Formats::Setting;

constexpr std::u16string_view deviceTab = u"chrome://base/content/tab_device.xul";

// Calls the plug-in until it says that it is done.
void activateWithoutGui(Kiln::UIPlugin& plugin) {
  constexpr int most = 100;
  for (int calls = 0; plugin.rootlessActivation();)
    if (++calls == most) throw std::runtime_error(Formats::sentence("It asks for more than {1} calls.", most));
}

// Properties that users may set, without context properties.
TracePairs userValues(const PropertyModel& model) {
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

// The state of one opening. Members are destroyed in reverse order: the plug-in, the objects that it is connected to,
// its library.
struct Preferences::Run {
  Run(Preferences& owner, const Options& options)
      : calls(owner.events.calls()),
        failures(Formats::toUtf8(options.plugin.filename().u16string()), calls),
        home(options.home),
        strings(owner.folders, options.locale),
        screen(options.dpi),
        library(make<Library>(options.plugin)),
        files{options.disk == nullptr ? Files::realDisk() : *options.disk,
              owner.events,
              home.path,
              [this](const auto& path) { return destination.takesPlaceOf(path); },
              [this] { changesFiles = true; },
              [this](const auto& path, const auto& problem) { noteUnread(path, problem); }},
        manager(make<PropertyManager>(
            make<PropertyModel>(readModel(options.resources / "models", options.model), owner.events), owner.events)),
        destination(files, *manager->model),
        widgets{owner.events, strings, screen.window(), [&owner](const auto& action) { owner.dispatch(action); },
                [&owner](WidgetNode& widget) { owner.face.widgetChanged(widget); }},
        layouts(owner.folders, options.withoutWidgets),
        host({owner.face, owner.events, owner.folders, strings, files, *manager->model}),
        gui(make<Gui>(GuiWorld{owner.face, layouts, widgets, [this] { files.guard->release(); }, options.actions},
                      owner.events)) {
    files.guard->longestWait = options.longestWait;
    host.active = options.active;
    host.fonts = options.fonts;
    host.helpContext = [this] { return isOver ? u"" : gui->panel().selectedTabId().str(); };
  }

  PropertyModel& model() { return *manager->model; }

  // The plug-in's PrintTicket interface. Throws std::runtime_error when it has none.
  Kiln::PTPlugin& ticketPlugin() const {
    const auto part = Kiln::smartCast<Kiln::PTPlugin>(plugin);
    if (!part) throw std::runtime_error(Formats::sentence("The plug-in does not take part in PrintTickets."));
    return *part;
  }

  // Tells the plug-in that a profile was imported: it reads its stores again.
  void fireImport(const std::filesystem::path& target) const {
    calls.run("profile import", [&] { manager->profileImport->fire(make<ProfileEvent>(files, target, std::nullopt)); });
  }

  void noteUnread(const std::filesystem::path& path, const Files::DiskError& problem) {
    failures.noteTold(problem.what());
    const bool isForbidden = problem.code() == std::errc::permission_denied;
    if (unread.empty() && !(isForbidden && isLocalData(*manager->settings, path))) unread = problem.what();
  }

  PluginCalls& calls;
  PluginFailures failures;
  Home home;
  std::string unread;
  StringTables strings;
  Screen screen;
  Kiln::SmartPtr<Library> library;
  bool changesFiles = false;  // whether the plug-in has changed files in the current action
  FileWorld files;
  Kiln::SmartPtr<PropertyManager> manager;
  JobDestination destination;
  WidgetWorld widgets;
  LayoutReader layouts;
  ReferenceHost host;
  // Kept to the end, for dialogs that the plug-in opens after the tabs are closed.
  Kiln::SmartPtr<Gui> gui;
  bool isOver = false;  // whether there are no tabs, or they are closed
  Kiln::SmartPtr<Kiln::UIPlugin> plugin;

  UndoHistory past;
  bool isUndoable = true;  // whether the current action is to be added to it
  int actions = 0;         // nesting depth
};

Preferences::Preferences(Options options, Face& shownBy)
    : runOptions(std::move(options)),
      face(shownBy),
      folders(runOptions.resources) {
  if (!runOptions.actions) runOptions.actions = std::make_shared<UserActions>();
}

Preferences::~Preferences() { cancelDialogs(); }

void Preferences::open() {
  run = std::make_unique<Run>(*this, runOptions);
  const std::string sentence = run->failures.sentenceOf([this] { start(); });
  run->files.guard->endAction();
  if (sentence.empty()) return;
  run.reset();
  throw std::runtime_error(sentence);
}

void Preferences::start() {
  const std::string name = expectPlugin(folders, runOptions.plugin, run->model(), run->host.ticketDocuments());
  tidyHome(run->files.disk, home(), runOptions.longestWait,
           [this](const std::string& sentence) { face.tell(sentence); });
  applyOptions();
  tidyUserFolders(run->files.disk, *run->manager->settings, home());
  const Mode mode = runOptions.mode;
  if (mode == Mode::docProp || mode == Mode::pdc) loadDeviceTab();

  run->library->demandSameContract(run->host);
  run->plugin = run->calls.run("createPlugin", [&] { return run->library->create(run->host, run->manager, name); });
  if (!run->plugin)
    throw std::runtime_error(Formats::sentence("The library {1} has no plug-in named {2}.",
                                               Formats::toUtf8(runOptions.plugin.u16string()), name));
  run->calls.run("create", [this] { run->plugin->create(); });
  run->calls.run("initialise", [this] { run->plugin->initialise(); });
  if (mode == Mode::rootless) {
    run->calls.run("rootlessActivation", [this] { activateWithoutGui(*run->plugin); });
    run->isOver = true;
    return;
  }
  run->calls.run("configureUI", [this] { run->plugin->configureUI(run->gui); });
  const auto fireReady = [this] { run->calls.run("ready", [this] { run->gui->fireReady(); }); };
  if (mode == Mode::prePrint) return dispatch(fireReady);
  run->gui->panel().select(run->gui->tabs().back().root->WidgetNode::id());
  fireReady();
  dispatch([this] { run->model().announce(); });
  run->past.clear();
}

void Preferences::applyOptions() {
  const std::filesystem::path& home = run->home.path;
  Settings& settings = *run->manager->settings;
  settings.set(Setting::userPath, (home / "user").generic_u16string());
  settings.set(Setting::userProfile, (home / "profile").generic_u16string());
  settings.set(Setting::settingsFolder, u"overlays");
  settings.set(Setting::localDataPath, (home / "localdata").generic_u16string());
  if (runOptions.mode != Mode::rootless) settings.set(Setting::uiMode, Formats::toUtf16(nameOf(runOptions.mode)));
  for (const auto& [key, value] : runOptions.settings) {
    if (value) {
      settings.set(key, *value);
    } else {
      settings.remove(key);
    }
  }
  for (const auto& [key, value] : runOptions.customisation) run->manager->customisation->set(key, value);
  for (const auto& [name, value] : runOptions.properties)
    if (!run->model().start(name, value))
      throw std::runtime_error(
          Formats::sentence("The model {1} has no property {2}.", runOptions.model, Formats::toUtf8(name)));
  run->model().started();
}

void Preferences::loadDeviceTab() {
  run->gui->loadTab(deviceTab);
  bindProperties(run->gui->tabs().front(), run->model(), [this](const auto& name, const auto& value) {
    if (run->model().value(name) != value) set(name, value);
  });
  const auto show = [this] {
    if (gui() != nullptr) showProperties(run->gui->tabs().front(), run->model());
  };
  run->model().onChange(show);
  show();
}

PropertyModel& Preferences::model() { return run->model(); }

const StringTables& Preferences::strings() const { return run->strings; }

std::optional<std::u16string> Preferences::setting(std::u16string_view key) const {
  return run->manager->settings->get(key);
}

Gui* Preferences::gui() { return run->isOver ? nullptr : run->gui.get(); }

const std::vector<Kiln::SmartPtr<Dialog>>& Preferences::openDialogs() const { return run->gui->openDialogs(); }

void Preferences::cancelDialogs() {
  if (run) run->gui->cancelDialogs();
}

const std::filesystem::path& Preferences::home() const { return run->home.path; }

const std::string& Preferences::unread() const { return run->unread; }

bool Preferences::accept() {
  if (run->isOver) return false;
  bool accepted = false;
  actions().act({"ok"}, [&] {
    accepted = firePreAccept();
    if (accepted) close();
  });
  return accepted;
}

bool Preferences::mayPrint() {
  if (run->isOver) return false;
  bool accepted = false;
  actions().act({"print"}, [&] { accepted = firePreAccept(); });
  return accepted;
}

bool Preferences::firePreAccept() {
  bool accepted = false;
  dispatch([&] { accepted = run->calls.run("pre-accept", [this] { return run->gui->panel().firePreAccept(); }); });
  if (!accepted) actions().vetoed();
  return accepted;
}

void Preferences::cancel() {
  if (run->isOver) return close();
  actions().act({"cancel"}, [this] { close(); });
}

void Preferences::close() {
  run->isOver = true;
  cancelDialogs();
}

void Preferences::selectTab(const std::u16string& id) {
  if (!run->isOver) actions().act({"tab", {id}}, [&] { run->gui->panel().select(id); });
}

void Preferences::help() {
  if (run->isOver) return;
  actions().act({"help"},
                [this] { dispatch([this] { run->calls.run("help", [this] { run->gui->panel().fireHelp(); }); }); });
}

bool Preferences::canUndo() const { return !run->past.isEmpty(); }

void Preferences::undo() {
  if (run->past.isEmpty()) return;
  const TracePairs before = run->past.takeLatest();
  actions().act({"undo"}, [&] {
    run->isUndoable = false;
    dispatch([&] { run->model().submit(differences(run->model(), before)); });
    run->isUndoable = true;
  });
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

void Preferences::set(const std::u16string& name, const std::u16string& value) {
  actions().act({"set", {name, value}}, [&] { dispatch([&] { run->model().submit({{name, value}}); }); });
}

void Preferences::setAvailable(const std::u16string& name, const std::u16string& option, bool available) {
  actions().act({available ? "allow" : "forbid", {name, option}},
                [&] { dispatch([&] { run->model().setAvailable(name, option, available); }); });
}

std::string Preferences::ticket() {
  return run->failures.orSentence(
      [this] { return run->host.ticketDocuments().document(run->ticketPlugin(), run->model(), Kiln::PTLevel::job); });
}

std::string Preferences::ticketSchema() {
  return run->failures.orSentence([this] { return run->host.ticketDocuments().schemaDocument(run->ticketPlugin()); });
}

std::string Preferences::capabilities() {
  return run->failures.orSentence(
      [this] { return run->host.ticketDocuments().capabilities(run->ticketPlugin(), run->model()); });
}

void Preferences::loadTicketFile(const std::filesystem::path& file) {
  actions().act({"load-ticket", {Files::pathText(file)}, OwnText::argument},
                [&] { loadTicket(Files::realDisk().read(file, documentLimits.bytes), Files::shownPath(file)); });
}

void Preferences::loadTicket(std::string_view document, const std::string& source) {
  const TracePairs before = userValues(run->model());
  const std::string sentence = run->failures.sentenceOf(
      [&] { run->host.ticketDocuments().load(run->ticketPlugin(), run->model(), document, source); });
  if (!sentence.empty()) throw std::runtime_error(sentence);
  TracePairs loaded;
  for (const auto& [name, value] : before)
    if (const auto now = *run->model().value(name); now != value) loaded.emplace_back(name, now);
  if (loaded.empty()) return;
  // The values are set already; submitting them runs the rules and fires the signals.
  run->isUndoable = false;
  dispatch([&] { run->model().submit(loaded); });
  run->isUndoable = true;
  if (!run->changesFiles) run->past.add(before);
}

void Preferences::writeJob(std::string_view bytes, std::optional<std::string_view> picture) {
  run->destination.write(bytes, picture);
}

std::optional<std::filesystem::path> Preferences::exportProfile(const std::filesystem::path& target,
                                                                const std::u16string& includeUserdata) {
  const auto event = make<ProfileEvent>(run->files, target, includeUserdata);
  // A plug-in may skip a file that it cannot read and report that; the profile would be incomplete.
  std::string told;
  run->host.hearTold = [&told](const std::string& sentence) { told = sentence; };
  const std::string sentence = run->failures.sentenceOf(
      [&] { run->calls.run("profile export", [&] { run->manager->profileExport->fire(event); }); });
  run->host.hearTold = {};
  if (run->actions == 0) run->files.guard->endAction();
  if (!sentence.empty() || !told.empty()) throw std::runtime_error(sentence.empty() ? told : sentence);
  const auto localData = setting(Setting::localDataPath);
  return localData ? std::optional(profileLocation(Files::pathFromText(*localData), target)) : std::nullopt;
}

void Preferences::importProfile(const std::filesystem::path& target, const TracePairs& values) {
  TracePairs changed = differences(run->model(), applicable(values, run->model().description()));
  dispatch([&] {
    for (const auto& [name, value] : changed) run->model().child(name)->setValue(value);
    run->fireImport(target);
    // The values are set already, and partly corrected by the plug-in; submitting them runs the rules and fires the
    // signals.
    for (auto& [name, value] : changed) value = *run->model().value(name);
    if (!changed.empty()) run->model().submit(changed);
  });
}

// The import signal is the contract's only one at which a plug-in reads its stores.
void Preferences::refreshStores() {
  dispatch([this] { run->fireImport({}); });
}

void Preferences::lock(std::vector<std::u16string> names) {
  actions().act({"lock", names}, [&] { run->host.lockedNames = std::move(names); });
}

void Preferences::dispatch(const std::function<void()>& action) {
  const bool outermost = run->actions == 0;
  const TracePairs before = outermost ? userValues(run->model()) : TracePairs();
  if (outermost) run->changesFiles = false;
  ++run->actions;
  const std::string sentence = run->failures.sentenceOf(action);
  --run->actions;
  if (outermost) run->files.guard->endAction();
  if (outermost && run->isUndoable && userValues(run->model()) != before) run->past.add(before);
  // Undo does not restore files, so earlier values may no longer match them.
  if (outermost && run->changesFiles) run->past.clear();
  if (sentence.empty()) return;
  actions().failed(sentence);
  face.showFailure(sentence);
}

}  // namespace Refhost
