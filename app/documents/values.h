// The values that an option or an argument of a command can have, for completion.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

namespace App {

// The options that are given on a command line, by name, with their values.
using GivenOptions = std::vector<std::pair<std::string, std::string>>;

struct Value {
  std::string word;
  std::string meaning = {};
};

struct Values {
  enum class Files { none, some, folders };

  std::vector<Value> words;
  Files files = Files::none;
  std::vector<std::string> endings;  // of the files; empty for any
};

// Those of the option, in the preferences that `given` opens. Nothing where they cannot be told. Changes no file of the
// user's, and never throws.
Values valuesOf(const CLI::App& command, const CLI::Option& option, const GivenOptions& given);

}  // namespace App
