#include "host/preferences.h"

#include "formats/names.h"
#include "formats/sentences.h"
#include "host/plugin_description.h"
#include "host/preferences_run.h"
#include "host/property_binding.h"

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

// Whether the folder is there, as far as that can be told.
bool isFolder(Files::Disk& disk, const std::filesystem::path& path) {
  bool found = false;
  if (!path.empty()) Files::tryTo([&] { found = disk.kind(path) == Files::EntryKind::folder; });
  return found;
}

}  // namespace

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
  run->files.changes->clear();
}

void Preferences::applyOptions() {
  const std::filesystem::path& home = run->home.path;
  Settings& settings = *run->manager->settings;
  settings.set(Setting::userPath, (home / "user").generic_u16string());
  settings.set(Setting::userProfile, (home / "profile").generic_u16string());
  settings.set(Setting::settingsFolder, u"overlays");
  const std::filesystem::path localData = home / "localdata";
  settings.set(Setting::localDataPath, localData.generic_u16string());
  if (isFolder(run->files.disk, runOptions.sharedData) && !isFolder(run->files.disk, localData)) {
    settings.set(Setting::localDataPath, runOptions.sharedData.generic_u16string());
    settings.set(Setting::userDataSupport, Formats::Value::yes);
  }
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

PresetChoice& Preferences::presets() {
  if (!run->presets)
    run->presets = std::make_unique<PresetChoice>(*this, Presets(run->files.disk, home(), runOptions.longestWait),
                                                  [this](const std::string& sentence) { face.tell(sentence); });
  return *run->presets;
}

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

std::optional<std::filesystem::path> Preferences::exportProfile(const std::filesystem::path& target,
                                                                const std::u16string& includeUserdata) {
  const auto event = make<ProfileEvent>(run->files, target, includeUserdata);
  // A plug-in may skip a file that it cannot read and report that; the profile would be incomplete.
  std::string told;
  run->host.hearTold = [&told](const std::string& sentence) { told = sentence; };
  const std::string sentence = run->failures.sentenceOf(
      [&] { run->calls.run("profile export", [&] { run->manager->profileExport->fire(event); }); });
  run->host.hearTold = {};
  if (run->actions == 0) run->files.changes->clear();
  if (run->actions == 0) run->files.guard->endAction();
  if (!sentence.empty() || !told.empty()) throw std::runtime_error(sentence.empty() ? told : sentence);
  const auto localData = setting(Setting::localDataPath);
  return localData ? std::optional(profileLocation(Files::pathFromText(*localData), target)) : std::nullopt;
}

void Preferences::lock(std::vector<std::u16string> names) {
  actions().act({"lock", names}, [&] { run->host.lockedNames = std::move(names); });
}

}  // namespace Refhost
