// What a host's exception says, as the user is told it.
#pragma once

#include "kiln/exception.h"

#include <string>
#include <string_view>

namespace Effect {

// UTF-8, with a full stop at its end, so that another sentence can follow.
std::string sentenceOf(const Kiln::Exception& problem);

// UTF-8 as UTF-16; what is no UTF-8 becomes U+FFFD.
std::u16string wideText(std::string_view utf8);

}  // namespace Effect
