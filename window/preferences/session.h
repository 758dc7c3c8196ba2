// The preferences during the life of their window: reopened for another model or language, and saved when the user
// accepts them.
#pragma once

#include "host/preferences.h"
#include "press/job/effects.h"
#include "window/language/texts.h"
#include "window/widgets/surroundings.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <string>

namespace Window {

class Session {
 public:
  // Does not open anything yet. `face` outlives the session.
  Session(Refhost::Options runOptions, Refhost::Face& face);

  // Called with each new preferences before they open, so that no trace event is missed.
  std::function<void(Refhost::Preferences&)> onOpening;

  // Called with the new path when a damaged settings file was moved away.
  std::function<void(const std::filesystem::path&)> onSetAside;

  // Opens the preferences with the saved settings. On std::runtime_error (one sentence) nothing is open.
  void open();

  // Reopens the preferences for that model and locale. Keeps the user's changes as far as the model supports them. On
  // std::runtime_error (one sentence) the preferences are open as before. Destroys the previous widgets in either case.
  void reopen(std::string model, std::string locale);

  // Valid after open.
  Refhost::Preferences& preferences() { return *opened; }
  Refhost::UserActions& actions() { return *options.actions; }
  const std::string& model() const { return options.model; }
  const std::string& locale() const { return options.locale; }

  // In the language of the open preferences; valid until they are reopened.
  Texts texts() { return Texts(preferences().strings()); }

  // The environment of the preferences' tabs and dialogs.
  Surroundings surroundings();

  // What a job would print with now.
  Press::Effects effects();

  // Whether there are unsaved changes.
  bool isChanged();

  // Accepts the preferences and saves their values; false when vetoed. Throws std::runtime_error, one sentence, when
  // they are accepted but cannot be saved.
  bool keep();

 private:
  Refhost::TracePairs userValues(bool changedOnly);
  void start(const Refhost::TracePairs& carried, bool isOtherLanguage = false);
  void open(const Refhost::Options& now);

  Refhost::Options options;
  Refhost::Face& face;
  QTemporaryDir homeOfThisRun;
  Refhost::TracePairs valuesWhenKept;
  std::unique_ptr<Refhost::Preferences> opened;
};

}  // namespace Window
