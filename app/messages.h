// Messages to a print scheduler, one line each on standard error.
#pragma once

#include <string>

namespace App {

enum class Message { error, warning, info, debug, page };

// "ERROR: " and so on: what a line of that kind begins with.
const char* messageStart(Message kind);

// Writes one; control characters in it, which could begin another line, become spaces.
void message(Message kind, std::string text);

}  // namespace App
