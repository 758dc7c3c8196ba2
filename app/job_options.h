// The options of a print job, as a scheduler hands them to its filters.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace App {

// The names and values of "NAME=VALUE NAME='A VALUE' NAME", in order; one without a value has none. Quotation marks of
// both kinds, a backslash before a character, and nested braces keep spaces in a value; the braces stay. What is not
// closed ends with the text.
std::vector<std::pair<std::string, std::string>> parseJobOptions(std::string_view text);

}  // namespace App
