// The preferences without user interaction, and the settings of a command line.
#pragma once

#include "app/host_options.h"
#include "app/opening.h"
#include "app/silent_face.h"
#include "host/preferences.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace App {

// The plug-in has rejected the settings.
class NotAccepted : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

// One opening of the preferences, with its own face. Settings are applied in the order of the calls, as if chosen by a
// user. All operations throw std::runtime_error, one sentence, when something cannot be set, or when a file of the
// user's could not be read: what is shown, printed or exported without it would be less than there is.
class SilentRun {
 public:
  // Opens the preferences; `tellUser` takes the host's sentences. Throws Failure when they cannot be opened.
  explicit SilentRun(const Refhost::Options& options, Tell tellUser = tell);

  void takeTicket(const std::filesystem::path& file);
  void choose(const Refhost::TracePairs& choices);

  // Runs user actions at the widgets; `inDialogs` is called for dialogs that they open (SilentFace::operateDialogs).
  void act(const std::function<void()>& atWidgets, const std::function<void(Refhost::Dialog&)>& inDialogs = {});

  // Accepts the preferences; returns the values to print with, like printedValues. Throws NotAccepted.
  std::map<std::string, std::string> accept();

  // The values that a job would print with now, by property.
  std::map<std::string, std::string> printedValues();

  Refhost::Preferences& preferences() { return opened; }
  SilentFace& face() { return silent; }

 private:
  void check();

  SilentFace silent;
  Refhost::Preferences opened;
};

// The options of all commands that apply settings without a window.
struct SettingOptions {
  HostOptions host;
  std::string profile;
  bool takesKept = false;
  std::string ticket;
  std::optional<std::string> watermark;  // an empty name is invalid
  std::vector<std::string> overlays;
  std::vector<std::string> settings;

  // Declares them on a command. This object must live until the command runs.
  void declare(CLI::App& command);

  // Applies the settings: first the ticket, then the marks, then single settings.
  void makeIn(SilentRun& run) const;

  // Tells the user of settings that have no effect. To be called when nothing more is set.
  void warn(SilentRun& run) const;
};

// Determines the home: a profile's temporary one, else the given folder, else the user's. Must live until printing is
// done, since marks are files there.
class Opening {
 public:
  Opening(const SettingOptions& given, const Interruption& interruption);

  const Refhost::Options& options() const { return resolved; }

 private:
  Refhost::Options resolved;
  std::optional<ProfileHome> profile;
};

}  // namespace App
