// What commands tell people: one line each on standard error. Texts of others in them cannot start another line or
// control a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace App {

// Tells the user a sentence.
void tell(std::string_view sentence);

// A name in a sentence.
std::string inQuotes(const std::string& name);

// The sentence without its full stop, to be continued in another one.
std::string withoutStop(std::string sentence);

// Where a command's sentences go.
using Tell = void (*)(std::string_view sentence);

// Messages to a print scheduler.
enum class Message { error, warning, info, debug, page };

// The scheduler breaks longer lines, and takes the rest for a line of its own.
inline constexpr std::size_t longestMessage = 1500;

// Writes a message after the prefix of its kind, such as "ERROR: "; cuts one that is too long.
void message(Message kind, std::string_view text);

}  // namespace App
