#pragma once

#include <string>
#include <string_view>

namespace Press {

/// The characters of a text in UTF-8; what is no UTF-8 becomes U+FFFD.
std::u32string charactersOf(std::string_view utf8);

std::string utf8Of(char32_t character);

}  // namespace Press
