// The options that every command which opens the preferences shares.
#pragma once

#include "host/preferences.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace App {

struct HostOptions {
  // Empty for the standard one, or the profile's where there is one.
  std::string model;
  std::string home;
  std::string plugin;
  std::string resources;

  // Declares them on a command. They must live until it runs.
  void declare(CLI::App& command, const std::string& homeHelp);

  // The same without the model and the plug-in, for commands that open nothing.
  void declarePlaces(CLI::App& command, const std::string& homeHelp);

  // What was given, and for the plug-in and the resources the ones beside this executable where nothing was; with this
  // machine's fonts.
  Refhost::Options resolve() const;
};

// A file by its UTF-8 name.
std::filesystem::path toPath(const std::string& utf8);

// "NAME=VALUE" in two at its first "="; `option` is for the sentence that a word without one is refused with.
std::pair<std::u16string, std::u16string> toPair(const std::string& option, const std::string& word);
Refhost::TracePairs toPairs(const std::string& option, const std::vector<std::string>& words);

// An option that takes one value each time it is given.
CLI::Option* addRepeatable(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                           const std::string& help);

}  // namespace App
