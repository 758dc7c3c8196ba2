// The options of a print job, as passed to scheduler filters.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace App {

// Parses "NAME=VALUE NAME='A VALUE' NAME" into names and values, in order; the value may be empty. Quotation marks of
// both kinds, backslash escapes, and nested braces protect spaces; the braces are kept. Unterminated quotes and braces
// end with the text.
std::vector<std::pair<std::string, std::string>> parseJobOptions(std::string_view text);

}  // namespace App
