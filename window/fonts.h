// Fonts for the language of the user interface.
#pragma once

#include <string>

namespace Window {

// Has the application's font draw what the locale's script needs. Chinese and Japanese share characters that they draw
// differently, so which font stands in for them cannot be left to chance.
void useFontsFor(const std::string& locale);

}  // namespace Window
