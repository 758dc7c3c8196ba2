// The preferences opened with nobody to ask, and the settings that a command line gives them.
#pragma once

#include "app/host_options.h"
#include "app/silent_face.h"
#include "host/preferences.h"

#include <memory>
#include <string>
#include <vector>

namespace App {

// The options of every command that makes settings without a window.
struct SettingOptions {
  HostOptions host;
  std::vector<std::string> settings;
  std::string ticket;

  // Declares them on a command. They must live until it runs.
  void declare(CLI::App& command);
};

// Preferences with a face of their own.
struct SilentRun {
  explicit SilentRun(const Refhost::Options& options) : preferences(options, face) {}

  SilentFace face;
  Refhost::Preferences preferences;
};

// Opens the preferences and makes the settings: the ticket's first, then the single ones, each as if it had been chosen.
// Throws Failure when the preferences cannot be opened, std::runtime_error when a setting cannot be made.
std::unique_ptr<SilentRun> openWithSettings(const SettingOptions& given);

}  // namespace App
