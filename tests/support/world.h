// A run of the preferences for a test: the built plug-in in the reference host, with a recording face.
#pragma once

#include "host/preferences.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Testing {

class RecordingFace : public Refhost::Face {
 public:
  void runModally(Refhost::Dialog& dialog) override {
    if (onModal) onModal(dialog);
  }
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override { ++widgetChanges; }
  void showHelp(const std::u16string& url, const std::u16string& topic) override {
    helpAddresses.push_back(url);
    helpTopics.push_back(topic);
  }
  std::optional<std::u16string> askJobStep() override {
    ++jobSteps;
    return jobStep;
  }
  void showFailure(const std::string& sentence) override { failures.push_back(sentence); }

  // The user's input in a modal dialog; a dialog that is still open afterwards is closed, neither accepted nor
  // cancelled.
  std::function<void(Refhost::Dialog&)> onModal;
  std::optional<std::u16string> jobStep;
  int jobSteps = 0;
  std::vector<std::u16string> helpAddresses;
  std::vector<std::u16string> helpTopics;
  std::vector<std::string> failures;
  int widgetChanges = 0;
};

// Options for the plug-in and the resources of this build.
Refhost::Options builtOptions();

struct World {
  // Opens the preferences.
  explicit World(Refhost::Options options = builtOptions());

  // The widget with that id and kind, which must exist.
  template <class Kind>
  Kind& widget(std::u16string_view id) {
    auto* found = dynamic_cast<Kind*>(preferences.gui()->find(id));
    if (found == nullptr) throw std::logic_error("no such widget of that kind");
    return *found;
  }
  Refhost::CheckBox& box(std::u16string_view id) { return widget<Refhost::CheckBox>(id); }

  std::u16string value(std::u16string_view property) { return preferences.model().value(property).value(); }

  // The events of one operation since the last call of take, and all events since then.
  std::vector<Refhost::TraceEvent> take();

  RecordingFace face;
  Refhost::Preferences preferences;
  std::vector<Refhost::TraceEvent> events;
};

// A member of an event as text: a flag as "true" or "false", pairs as "name=value" joined by commas; empty for none.
std::string member(const Refhost::TraceEvent& event, const std::string& name);

// "SIGNAL OF" of each connection among the events, in order.
std::vector<std::string> connections(const std::vector<Refhost::TraceEvent>& events);

// "ID DO [VALUE]" of each widget operation among the events, in order.
std::vector<std::string> widgetOperations(const std::vector<Refhost::TraceEvent>& events);

// The pairs of each transition among the events, formatted like member.
std::vector<std::string> transitions(const std::vector<Refhost::TraceEvent>& events);

// A temporary folder, removed by the destructor.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path path;
};

// Writes a file, and the folders that it is in.
void writeFile(const std::filesystem::path& file, std::string_view bytes);

// Copies the build's resources, for tests to damage.
void copyResources(const std::filesystem::path& to);

}  // namespace Testing
