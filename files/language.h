// The language of the process's sentences (see formats/sentences.h), from the catalogues of the product.
#pragma once

#include <string>
#include <vector>

namespace Files {

// Speaks the language of the locale, "de-DE" for example; English where no catalogue has it. The catalogue is read when
// the first sentence is made.
void speak(const std::string& locale);

// The locales with sentences, sorted: those of the catalogues, and English.
std::vector<std::string> spokenLocales();

}  // namespace Files
