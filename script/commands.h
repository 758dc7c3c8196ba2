// The commands of a script.
#pragma once

#include "script/json.h"

#include <optional>
#include <string>
#include <vector>

namespace Script {

class Session;

// Executes one command; its name is the first word. Returns additional members of the answer. Throws std::exception,
// one sentence, without a change, when the command is invalid.
Json obey(Session& session, const std::vector<std::string>& words);

// Parses the argument of "job-step": "-" leaves OverlayImageName unchanged.
std::optional<std::u16string> jobStepOf(const std::u16string& word);

}  // namespace Script
