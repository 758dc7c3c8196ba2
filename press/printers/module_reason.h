// What the library of the print service says of its last answer.
#pragma once

#include "formats/sentences.h"

#include <cups/cups.h>

#include <string>
#include <string_view>

namespace Press {

// The service's words, or the template of a clause.
inline std::string lastReason() {
  const char* const words = cupsLastErrorString();
  return words == nullptr || *words == '\0' ? std::string(Formats::sentenceTemplate("it does not answer")) : words;
}

// Nobody is asked for the service's password on a terminal, or behind a window: what wants one is refused.
inline void askForNoPassword() {
  cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                     nullptr);
}

}  // namespace Press
