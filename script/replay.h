// Replays recordings: runs their commands, and compares the answers with the recorded ones.
#pragma once

#include "script/recording.h"
#include "script/run.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace Script {

// A command of a script.
struct Step {
  std::size_t line;  // from 1
  std::string command;

  // Nothing for a command without an answer.
  std::optional<nlohmann::json> expected = {};
};

struct RecordedScript {
  std::string name;
  std::string text;
  Facts facts;
  std::vector<Step> steps;

  // The values of the facts of that name.
  std::vector<std::string> valuesOf(const std::string& fact) const;
};

// Reads a script with its facts and answers. Throws std::runtime_error, one sentence with name and line, for an answer
// that is not JSON or belongs to no command, and when the script has no answers.
RecordedScript readRecording(std::istream& lines, const std::string& name);

// Runs the script until an answer differs from the recorded one, which is written to `out`. "{home}" in the values of
// properties stands for the home. Returns the exit status: 0 when all are equal, else 1. Throws like run.
int replay(const Request& request, const RecordedScript& script, std::ostream& out);

}  // namespace Script
