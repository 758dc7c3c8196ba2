// Splits script lines into words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Script {

// Splits a line like a POSIX shell: blanks separate words, "..." and '...' quote, and a backslash escapes the next
// character, except in single quotes. No expansion. Throws std::runtime_error for an unterminated quote or a trailing
// backslash.
std::vector<std::string> splitWords(std::string_view line);

// The word as it is written in a line, in quotation marks when it needs them. A line break becomes a space: a line
// cannot have one.
std::string toWord(std::string_view text);

// Whether a line is blank or a comment, which starts with "#".
bool isComment(std::string_view line);

}  // namespace Script
