// The preferences over the time that their window is open: opened anew for another model or language, and kept for the
// next time when the user accepts them.
#pragma once

#include "host/preferences.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <string>

namespace Window {

class Session {
 public:
  // Opens nothing yet. `face` outlives the session.
  Session(Refhost::Options runOptions, Refhost::Face& face);

  // Called with each new preferences before they open, so that nothing of their trace is missed.
  std::function<void(Refhost::Preferences&)> onOpening;

  // Called when a damaged settings file was put out of the way.
  std::function<void(const std::filesystem::path&)> onSetAside;

  // Opens the preferences as they were kept. Throws std::runtime_error: one sentence, and nothing is open.
  void open();

  // Opens the preferences for that model and locale. What the user changed stays where the model has it. Throws
  // std::runtime_error: one sentence, and the preferences are open as before. The widgets of before are gone either
  // way.
  void reopen(std::string model, std::string locale);

  // Valid from open on.
  Refhost::Preferences& preferences() { return *opened; }
  const std::string& model() const { return options.model; }
  const std::string& locale() const { return options.locale; }

  // Whether the next opening would show something else if the preferences were cancelled now.
  bool isChanged();

  // Accepts the preferences and keeps their values; false when that is refused. Throws std::runtime_error, one
  // sentence, when they are accepted but cannot be kept.
  bool keep();

 private:
  Refhost::TracePairs userValues(bool changedOnly);
  void start(const Refhost::TracePairs& carried);

  Refhost::Options options;
  Refhost::Face& face;
  QTemporaryDir homeOfThisRun;
  Refhost::TracePairs valuesWhenKept;
  std::unique_ptr<Refhost::Preferences> opened;
};

}  // namespace Window
