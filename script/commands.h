// The commands of a script.
#pragma once

#include "script/json.h"

#include <optional>
#include <string>
#include <vector>

namespace Script {

class Session;

// Obeys one command, its name first. Gives the members that it adds to its answer. Throws std::exception, one sentence,
// when it cannot be obeyed; nothing has happened then.
Json obey(Session& session, const std::vector<std::string>& words);

// What the word after "job-step" stands for: "-" for leaving OverlayImageName as it is, else the name.
std::optional<std::u16string> jobStepOf(const std::u16string& word);

}  // namespace Script
