// Fonts for the language of the user interface.
#pragma once

#include <string>

namespace Window {

// Makes the application's font support the locale's script. Chinese and Japanese draw shared characters differently, so
// the fallback font must be chosen explicitly.
void useFontsFor(const std::string& locale);

}  // namespace Window
