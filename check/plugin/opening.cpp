#include "check/plugin/opening.h"

#include "formats/names.h"
#include "formats/text.h"
#include "host/widgets/widget.h"

#include <algorithm>

namespace Checking {
namespace {

namespace Setting = Formats::Setting;
using Refhost::make;
using Refhost::Mode;

// Not of the plug-in: signals are the host's own.
bool isCall(const Refhost::TraceEvent& event) {
  return event.op != "signal" && event.op != "connect" && event.op != "load" && event.op != "transition";
}

// A GUI on which some widgets are of another kind.
class GuiOfLabels final : public GuiAround {
 public:
  GuiOfLabels(Kiln::SmartPtr<Kiln::XUL::GUI> answering, Ready readiness, Watch& toldOfCalls,
              const std::set<std::u16string, std::less<>>& labels, Refhost::WidgetWorld& widgets)
      : GuiAround(std::move(answering), std::move(readiness), toldOfCalls) {
    for (const std::u16string& id : labels)
      others.push_back(make<Refhost::Label>(widgets, Refhost::WidgetKind::label, id));
  }

  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override {
    for (const auto& label : others)
      if (label->WidgetNode::id() == id.view()) return label;
    return GuiAround::widgetById(id);
  }

 private:
  std::vector<Kiln::SmartPtr<Refhost::Label>> others;
};

Refhost::ModelDescription modelOf(const Subject& subject, const std::u16string& without) {
  Refhost::ModelDescription model = Refhost::readModel(subject.resources / "models", subject.model);
  if (without.empty()) return model;
  std::erase_if(model.properties, [&](const auto& property) { return property.name == without; });
  std::erase_if(model.rules, [&](const Refhost::RuleDescription& rule) {
    const auto& conditions = rule.conditions;
    return rule.property == without || std::any_of(conditions.begin(), conditions.end(), [&](const auto& condition) {
             return condition.property == without;
           });
  });
  return model;
}

}  // namespace

void CheckFace::runModally(Refhost::Dialog& dialog) {
  if (onModal) onModal(dialog);
  if (dialog.isOpen()) dialog.cancel();
  if (dialog.isOpen()) dialog.close();
}

Opening::World::World(Opening& opening, const Subject& subject)
    : chrome(subject.resources),
      strings(chrome, opening.conditions.locale),
      files{Files::realDisk(), trace, subject.home,
            [this](const auto& path) { return destination.takesPlaceOf(path); }},
      manager(make<Refhost::PropertyManager>(
          make<Refhost::PropertyModel>(modelOf(subject, opening.conditions.withoutProperty), trace), trace)),
      destination(files, *manager->model),
      widgets{trace, strings, screen.window(), [&opening](const auto& action) { opening.dispatch(action); },
              [](Refhost::WidgetNode&) {}},
      reader(chrome, opening.conditions.withoutWidgets),
      host({opening.face, trace, chrome, strings, files, *manager->model}),
      gui(make<Refhost::Gui>(Refhost::GuiWorld{opening.face, reader, widgets, [this] { files.guard->release(); }},
                             trace)),
      ready(make<Refhost::HostSignal<Kiln::SmartPtr<Kiln::XUL::GUI>>>(trace, "gui-ready", u"GUI")),
      hostAround(host, opening),
      modelAround(make<ModelAround>(manager->model, opening)),
      managerAround(make<ManagerAround>(manager, modelAround, opening)),
      guiAround(opening.conditions.labels.empty() ? make<GuiAround>(gui, ready, opening)
                                                  : Kiln::SmartPtr<GuiAround>(make<GuiOfLabels>(
                                                        gui, ready, opening, opening.conditions.labels, widgets))) {}

Opening::Opening(const Subject& checked, Refhost::Library& loaded, Conditions given, Faults* failing)
    : conditions(std::move(given)),
      faults(failing),
      library(loaded),
      name(checked.plugin),
      libraryReferences(loaded.references()),
      world(std::make_unique<World>(*this, checked)) {
  applySettings(checked);
  world->host.active = conditions.active;
  world->host.helpContext = [this] { return world->gui->panel().selectedTabId().str(); };
  world->trace.listen([this](const Refhost::TraceEvent& event) { heard(event); });
}

Opening::~Opening() {
  faults = nullptr;
  try {
    world->gui->cancelDialogs();
  } catch (...) {
    for (auto dialogs = world->gui->openDialogs(); const auto& dialog : dialogs) dialog->close();
  }
  failure = nullptr;
  release();
}

void Opening::applySettings(const Subject& subject) {
  Refhost::Settings& settings = *world->manager->settings;
  for (const char* folder : {"user", "profile", "localdata"})
    std::filesystem::create_directories(subject.home / folder);
  settings.set(Setting::userPath, (subject.home / "user").generic_u16string());
  settings.set(Setting::userProfile, (subject.home / "profile").generic_u16string());
  settings.set(Setting::settingsFolder, u"overlays");
  settings.set(Setting::localDataPath, (subject.home / "localdata").generic_u16string());
  if (conditions.uiMode) {
    if (*conditions.uiMode) settings.set(Setting::uiMode, **conditions.uiMode);
  } else if (conditions.mode != Mode::rootless) {
    settings.set(Setting::uiMode, Formats::toUtf16(nameOf(conditions.mode)));
  }
}

Kiln::SmartPtr<Kiln::UIPlugin> Opening::create(const Kiln::PropertyManager& manager, std::string_view plugin,
                                               void* reserved) {
  return Kiln::SmartPtr<Kiln::UIPlugin>(library.createPlugin()(
      world->hostAround, manager, Refhost::text(plugin), reserved, Kiln::SmartPtr<Kiln::Services::Library>(&library)));
}

void Opening::makePlugin() {
  Kiln::VersionExchange versions;
  create(nullptr, Kiln::versionQuestion, &versions);
  if (!versions.plugin.worksWith(versions.host))
    throw Skipped("The library does not speak this version of the contract, see contract/version.");
  made = create(world->managerAround, name, nullptr);
}

void Opening::begin() {
  demand(isMade(), "createPlugin makes no plug-in of the name \"" + name + "\".");
  made->create();
  made->initialise();
}

void Opening::activate() {
  if (conditions.mode != Mode::rootless) return made->configureUI(world->guiAround);
  for (int calls = 1; made->rootlessActivation(); ++calls)
    demand(calls < 100, "rootlessActivation asks for more than 100 calls.");
}

void Opening::fireReady() {
  if (conditions.mode == Mode::rootless) return;
  isReady = true;
  if (!world->gui->tabs().empty()) world->gui->panel().select(world->gui->tabs().back().root->WidgetNode::id());
  act([this] { world->ready->fire(world->guiAround); });
}

void Opening::announce() {
  if (hasTabs()) act([this] { model().announce(); });
}

void Opening::open() {
  makePlugin();
  begin();
  activate();
  fireReady();
  announce();
}

void Opening::release() {
  isReleasing = true;
  made.reset();
  isReleasing = false;
}

void Opening::act(const std::function<void()>& action) {
  failure = nullptr;
  dispatch(action);
  world->files.guard->endAction();
  if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
}

void Opening::dispatch(const std::function<void()>& action) {
  try {
    action();
  } catch (...) {
    const std::exception_ptr problem = std::current_exception();
    if (!problem) throw;  // of another compiler, which cannot be kept
    if (!failure) failure = problem;
  }
}

Kiln::SmartPtr<Kiln::PTPlugin> Opening::ticketPlugin() const {
  const auto part = Kiln::smartCast<Kiln::PTPlugin>(made);
  if (!part) throw Skipped("The plug-in has no PTPlugin: it makes no tickets.");
  return part;
}

void Opening::calling(const char* operation, bool needsReady) {
  if (isReleasing) late.emplace_back(operation);
  if (needsReady && !isReady) early.emplace_back(operation);
  latest = operation;
  ++count;
  if (faults != nullptr && !isReleasing) faults->at(count, operation);
}

void Opening::heard(const Refhost::TraceEvent& event) {
  if (event.op == "load")
    for (const auto& [member, value] : event.members)
      if (member == "url") loadedLayouts.push_back(std::get<std::u16string>(value));
  if (isCall(event) && made) calling(event.op.c_str(), false);
}

std::vector<std::string> Opening::stillReferenced() const {
  std::vector<std::string> names;
  const auto expect = [&names](int found, int own, const char* what) {
    if (found > own) names.emplace_back(what);
  };
  expect(world->managerAround->references(), 1, "the property manager");
  expect(world->modelAround->references(), 2, "the root of the model");
  expect(world->guiAround->references(), 1, "the GUI");
  expect(library.references(), libraryReferences, "the library");
  for (const Refhost::Layout& layout : world->gui->tabs())
    Refhost::walk(*layout.root, [&](Refhost::WidgetNode& widget) {
      if (widget.asWidget().references() > 1) names.push_back("the widget " + Formats::toUtf8(widget.id()));
    });
  return names;
}

}  // namespace Checking
