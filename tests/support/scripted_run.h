// Runs scripts in this process.
#pragma once

#include "script/run.h"

#include <nlohmann/json.hpp>

#include <sstream>
#include <string>
#include <vector>

// The answers to a script, line by line, and the exit status.
struct Scripted {
  std::vector<nlohmann::json> answers;
  int status = -1;
};

inline Scripted runScript(const std::string& script, const Script::Request& request) {
  std::istringstream commands(script);
  std::ostringstream answers;
  Scripted result;
  result.status = Script::run(request, commands, answers);
  std::istringstream lines(answers.str());
  for (std::string line; std::getline(lines, line);) result.answers.push_back(nlohmann::json::parse(line));
  return result;
}
