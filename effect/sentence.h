// What a host's exception says, as the user is told it.
#pragma once

#include "kiln/exception.h"

#include <string>
#include <string_view>

namespace Effect {

// UTF-8, with a full stop at its end, so that another sentence can follow.
std::string sentenceOf(const Kiln::Exception& problem);

// The same, and that the file in question is left as it is until somebody takes it away.
std::string sentenceOfBlocking(const Kiln::Exception& problem);

// UTF-8 as UTF-16; what is no UTF-8 becomes U+FFFD.
std::u16string wideText(std::string_view utf8);

// UTF-16 as UTF-8; an unpaired surrogate becomes U+FFFD.
std::string narrowText(std::u16string_view utf16);

}  // namespace Effect
