// The preferences of a job that is captured as an overlay.
#pragma once

#include "overlay_tab.h"

inline const std::string full = "chrome://effect/content/dlg_overlayfull.xul";
inline const std::string overwrite = "chrome://base/content/dlg_overwrite.xul";

// The preferences of a job to be captured as an overlay.
inline Refhost::Options overlayJob(Refhost::Mode mode = Refhost::Mode::docProp) {
  auto options = Testing::builtOptions();
  options.mode = mode;
  options.properties = {{u"PrintJob", u"Overlay"}};
  return options;
}

struct Creation : OverlayTab {
  explicit Creation(const OverlayHome& openedHome, std::optional<std::u16string> name,
                    Refhost::Options options = overlayJob())
      : OverlayTab(openedHome, std::move(options)) {
    world->face.jobStep = std::move(name);
  }

  // Presses OK of the preferences.
  bool accept() { return world->preferences.accept(); }
};

class OverlayCreation : public testing::Test {
 protected:
  OverlayHome home;
};

// The face answers the job step while the print-time step runs.
struct PrintTime {
  PrintTime(const OverlayHome& home, std::optional<std::u16string> name, Refhost::Options options) {
    face.jobStep = std::move(name);
    face.onModal = [this](Refhost::Dialog& dialog) { dialogs.push_back(Formats::toUtf8(dialog.url())); };
    options.home = home.folder.path;
    preferences.emplace(std::move(options), face);
    preferences->trace().listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
    preferences->open();
  }
  bool isCancelled() {
    const bool isTold =
        std::any_of(events.begin(), events.end(), [](const auto& event) { return event.op == "cancel-job"; });
    EXPECT_EQ(isTold, preferences->model().value(u"CancelJob") == u"True");
    return isTold;
  }

  Testing::RecordingFace face;
  std::vector<std::string> dialogs;
  std::vector<Refhost::TraceEvent> events;
  std::optional<Refhost::Preferences> preferences;
};
