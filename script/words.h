// The words of a script line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Script {

// Splits a line as a POSIX shell splits words: blanks separate, "..." and '...' keep text whole, and a backslash takes
// the next character as it is outside single quotes, inside double ones too. Nothing is expanded. Throws
// std::runtime_error when a quotation mark or a last backslash has no partner.
std::vector<std::string> splitWords(std::string_view line);

// Whether a line is no command: it holds nothing but blanks, or begins with "#".
bool isComment(std::string_view line);

}  // namespace Script
