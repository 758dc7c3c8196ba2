// The preferences opened with nobody to ask, and the settings that a command line gives them.
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

// The plug-in has refused the settings.
class NotAccepted : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

// One opening of the preferences, with a face of its own. Settings are made in the order of the calls, each as if it
// had been chosen. All operations throw std::runtime_error, one sentence, when something cannot be set.
class SilentRun {
 public:
  // Opens the preferences. `messageStart` goes before what the host tells. Throws Failure when they cannot be opened.
  explicit SilentRun(const Refhost::Options& options, const std::string& messageStart = "kiln: ");

  void takeTicket(const std::filesystem::path& file);
  void choose(const Refhost::TracePairs& choices);

  // Does what a user does at the widgets, and in the dialogs that open of it, as SilentFace::operateDialogs says.
  void act(const std::function<void()>& atWidgets, const std::function<void(Refhost::Dialog&)>& inDialogs = {});

  // Accepts the preferences: the values with which the job prints, as printedValues. Throws NotAccepted.
  std::map<std::string, std::string> accept();

  // The values with which a job would print now, by property.
  std::map<std::string, std::string> printedValues();

  Refhost::Preferences& preferences() { return opened; }
  SilentFace& face() { return silent; }

 private:
  SilentFace silent;
  Refhost::Preferences opened;
};

// The options of every command that makes settings without a window.
struct SettingOptions {
  HostOptions host;
  std::string profile;
  std::string ticket;
  std::optional<std::string> watermark;  // an empty name is none that there is, and so refused
  std::vector<std::string> overlays;
  std::vector<std::string> settings;

  // Declares them on a command. They must live until it runs.
  void declare(CLI::App& command);

  // Makes the settings: the ticket's first, then the marks, then the single ones.
  void makeIn(SilentRun& run) const;
};

// Where the preferences open with such options: in a profile's own home, else in the folder that was named, else in the
// user's. Lives until everything is done, since marks are files there.
class Opening {
 public:
  Opening(const SettingOptions& given, const Interruption& interruption);

  const Refhost::Options& options() const { return resolved; }

 private:
  Refhost::Options resolved;
  std::optional<ProfileHome> profile;
};

}  // namespace App
