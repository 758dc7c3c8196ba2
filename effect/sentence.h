// Exception messages as shown to the user.
#pragma once

#include "kiln/exception.h"

#include <string>
#include <string_view>

namespace Effect {

// The message in UTF-8, with a full stop, so that another sentence can follow.
std::string sentenceOf(const Kiln::Exception& problem);

// The same, followed by the advice to move the file away, which is not overwritten.
std::string sentenceOfBlocking(const Kiln::Exception& problem);

// UTF-8 to UTF-16; invalid sequences become U+FFFD.
std::u16string wideText(std::string_view utf8);

// UTF-16 to UTF-8; an unpaired surrogate becomes U+FFFD.
std::string narrowText(std::u16string_view utf16);

}  // namespace Effect
