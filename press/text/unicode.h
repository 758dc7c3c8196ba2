#pragma once

#include <string>
#include <string_view>

namespace Press {

// Decodes UTF-8; invalid sequences become U+FFFD.
std::u32string charactersOf(std::string_view utf8);

std::string utf8Of(char32_t character);

}  // namespace Press
