// The state of one opening of the preferences.
#pragma once

#include "files/path_text.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/home.h"
#include "host/job_destination.h"
#include "host/library.h"
#include "host/plugin_failures.h"
#include "host/preferences.h"
#include "host/profiles/profile_event.h"
#include "host/reference_host.h"
#include "host/screen.h"
#include "host/undo_history.h"
#include "host/user_folders.h"

#include <stdexcept>

namespace Refhost {

// Members are destroyed in reverse order: the plug-in, the objects that it is connected to, its library.
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
              [this](const auto& path, const auto& problem) { noteUnread(path, problem); },
              home.problem},
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
    files.changes = std::make_shared<FileChanges>();
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

  void extendLatest();
  void addStep(TracePairs before, const UserAction* action);
  void takeUp(TracePairs values, const std::filesystem::path& target);
  void goTo(const UndoStep& step, FileChanges::State state);

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

  std::unique_ptr<PresetChoice> presets;  // null until it is asked for

  UndoHistory past;
  UndoHistory future;      // what was undone
  bool isUndoable = true;  // whether the current action is to be added to the past
  int actions = 0;         // nesting depth
};

}  // namespace Refhost
