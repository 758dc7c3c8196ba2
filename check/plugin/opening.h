// One opening of a plug-in in the reference host, step by step, and what the plug-in calls meanwhile.
#pragma once

#include "check/around/gui_around.h"
#include "check/around/host_around.h"
#include "check/around/properties_around.h"
#include "check/check.h"
#include "files/module.h"
#include "host/gui.h"
#include "host/job_destination.h"
#include "host/library.h"
#include "host/preferences.h"
#include "host/reference_host.h"
#include "host/screen.h"

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Checking {

// What an opening differs in from the usual one.
struct Conditions {
  Refhost::Mode mode = Refhost::Mode::docProp;
  bool active = true;
  std::string locale = "en-US";

  // What the setting "UIMode" is instead; without a value it does not exist.
  std::optional<std::optional<std::u16string>> uiMode = {};
  std::set<std::u16string, std::less<>> withoutWidgets = {};
  std::u16string withoutProperty = {};

  // Widgets that are of another kind: each is a label.
  std::set<std::u16string, std::less<>> labels = {};
};

// Fails calls of the plug-in to the host.
class Faults {
 public:
  virtual ~Faults() = default;

  // The call with that number, from 1, is being made; throws to fail it.
  virtual void at(int call, const char* operation) = 0;
};

// The face of a run of checks: remembers what is told, and operates dialogs.
class CheckFace final : public Refhost::Face {
 public:
  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return u"Check"; }
  void showFailure(const std::string& sentence) override { told.push_back(sentence); }

  // The user's input in a modal dialog; one that is still open afterwards is cancelled.
  std::function<void(Refhost::Dialog&)> onModal;
  std::vector<std::string> told;
};

class Opening final : public Watch {
 public:
  // Both outlive the opening.
  Opening(const Subject& checked, Refhost::Library& loaded, Conditions given = {}, Faults* failing = nullptr);
  ~Opening() override;
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;

  // The steps of kiln/plugin.h. What the plug-in throws passes through them.
  void makePlugin();  // exchanges versions first; throws Skipped when they do not work together
  void begin();       // create and initialise
  void activate();    // configureUI, or rootlessActivation
  void fireReady();
  void announce();  // the initial state
  void open();      // all of them

  // The plug-in that createPlugin makes of these arguments; the host and the library are as ever.
  Kiln::SmartPtr<Kiln::UIPlugin> create(const Kiln::PropertyManager& manager, std::string_view plugin, void* reserved);
  Kiln::PropertyManager givenManager() const { return world->managerAround; }

  // Releases the plug-in, which everything else outlives.
  void release();

  // Runs a user's action; rethrows the first exception of the plug-in's handlers.
  void act(const std::function<void()>& action);

  bool hasTabs() const { return conditions.mode == Refhost::Mode::docProp || conditions.mode == Refhost::Mode::pdc; }

  Kiln::UIPlugin& plugin() const { return *made; }
  bool isMade() const { return bool(made); }

  // Throws Skipped when the plug-in makes no tickets.
  Kiln::SmartPtr<Kiln::PTPlugin> ticketPlugin() const;
  Refhost::TicketService& tickets() { return world->host.ticketDocuments(); }
  Refhost::PropertyModel& model() const { return *world->manager->model; }
  Kiln::SmartPtr<ModelAround> givenModel() const { return world->modelAround; }
  Refhost::Gui& gui() const { return *world->gui; }
  const Refhost::StringTables& strings() const { return world->strings; }
  const Refhost::ChromeFolders& chrome() const { return world->chrome; }
  Refhost::PropertyManager& manager() const { return *world->manager; }
  const Refhost::FileWorld& files() const { return world->files; }

  // The addresses of the layouts that the plug-in has loaded.
  const std::vector<std::u16string>& layouts() const { return loadedLayouts; }

  int calls() const { return count; }
  const std::string& lastCall() const { return latest; }
  const std::vector<std::string>& callsBeforeReady() const { return early; }
  const std::vector<std::string>& callsOfDestructor() const { return late; }

  // Objects of the host that are referenced from outside, though the plug-in is released: their names.
  std::vector<std::string> stillReferenced() const;

  CheckFace face;

 private:
  struct World {
    World(Opening& opening, const Subject& subject);

    Refhost::Trace trace;
    Refhost::ChromeFolders chrome;
    Refhost::StringTables strings;
    Refhost::FileWorld files;
    Kiln::SmartPtr<Refhost::PropertyManager> manager;
    Refhost::JobDestination destination;
    Refhost::Screen screen{std::nullopt};
    Refhost::WidgetWorld widgets;
    Refhost::LayoutReader reader;
    Refhost::ReferenceHost host;
    Kiln::SmartPtr<Refhost::Gui> gui;
    Kiln::SmartPtr<Refhost::HostSignal<Kiln::SmartPtr<Kiln::XUL::GUI>>> ready;
    HostAround hostAround;
    Kiln::SmartPtr<ModelAround> modelAround;
    Kiln::SmartPtr<ManagerAround> managerAround;
    Kiln::SmartPtr<GuiAround> guiAround;
  };

  void calling(const char* operation, bool needsReady) override;
  void heard(const Refhost::TraceEvent& event);
  void dispatch(const std::function<void()>& action);
  void applySettings(const Subject& subject);

  Conditions conditions;
  Faults* faults;
  Refhost::Library& library;
  std::string name;
  bool isReady = false;
  bool isReleasing = false;
  int count = 0;
  std::string latest;
  std::vector<std::string> early;
  std::vector<std::string> late;
  std::vector<std::u16string> loadedLayouts;
  std::exception_ptr failure;
  int libraryReferences;
  std::unique_ptr<World> world;
  Kiln::SmartPtr<Kiln::UIPlugin> made;
};

}  // namespace Checking
