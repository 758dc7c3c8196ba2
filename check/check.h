// What a check is: one sentence of the contract, and how a library is held to it.
//
//   1. `kiln check` runs each check in a process of its own (app/commands/check.cpp), since a library that breaks the
//      contract may crash or hang;
//   2. the check's function returns when the library keeps to the sentence, and throws Failed or Skipped otherwise;
//   what
//      else it throws is a failure, too.
#pragma once

#include "files/layered_folder.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace Checking {

// What is checked, and where.
struct Subject {
  std::filesystem::path library;

  // The name that the plug-in is asked for by.
  std::string plugin;

  // The packages and models, and the model to open with.
  Files::LayeredFolder resources;
  std::string model;

  // An empty folder for the files of the check.
  std::filesystem::path home;
};

struct Check {
  // "life-cycle/create": the group, then what of it.
  const char* id;

  // What the library does when it passes.
  const char* sentence;

  void (*run)(const Subject&);
};

// The library breaks the sentence: one sentence with what was expected, and what was found.
class Failed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The check does not apply to the library: one sentence with the reason.
class Skipped : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws Failed with `sentence` unless `isTrue`.
inline void demand(bool isTrue, const std::string& sentence) {
  if (!isTrue) throw Failed(sentence);
}

// The sentence of the exception that is being handled.
std::string sentenceOfCurrentException();

}  // namespace Checking
