// Messages to a print scheduler, one line each on standard error.
#pragma once

#include <string>

namespace App {

enum class Message { error, warning, info, debug, page };

// The prefix of a line of that kind, such as "ERROR: ".
const char* messageStart(Message kind);

// Writes a message; replaces control characters, which could start another line, by spaces.
void message(Message kind, std::string text);

}  // namespace App
