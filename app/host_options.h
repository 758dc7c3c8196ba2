// The options shared by all commands that open the preferences.
#pragma once

#include "app/system/user.h"
#include "host/preferences.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace App {

struct HostOptions {
  // Empty for the standard model, or the profile's if there is one.
  std::string model;
  std::string home;
  std::string plugin;
  std::vector<std::string> resources;

  // The folder of the administrator's marks for all users.
  std::string marks = sharedMarksFolder();

  // Declares them on a command. This object must live until the command runs.
  void declare(CLI::App& command, const std::string& homeHelp);

  // The same without model and plug-in, for commands that do not open the preferences.
  void declarePlaces(CLI::App& command, const std::string& homeHelp);

  // The options given, with the plug-in and resources beside this executable as defaults, and with this machine's
  // fonts.
  Refhost::Options resolve() const;
};

// Converts a UTF-8 file name.
std::filesystem::path toPath(const std::string& utf8);

// Splits "NAME=VALUE" at the first "="; `option` is for the error message when there is none.
std::pair<std::u16string, std::u16string> toPair(const std::string& option, const std::string& word);
Refhost::TracePairs toPairs(const std::string& option, const std::vector<std::string>& words);

// Rejects an empty value, which is probably an unset variable of a script, instead of ignoring the option. `clause`
// says why: "a file has to be named".
CLI::Validator notEmpty(const std::string& clause);

// An option that may be repeated, with one value each time.
CLI::Option* addRepeatable(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                           const std::string& help);

}  // namespace App
