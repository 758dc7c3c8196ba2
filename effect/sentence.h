// Exception messages as shown to the user.
#pragma once

#include "formats/text.h"
#include "kiln/exception.h"

#include <string>

namespace Effect {

// The message in UTF-8, with a full stop, so that another sentence can follow.
std::string sentenceOf(const Kiln::Exception& problem);

// The same, followed by the advice to mend the file or to move it away, since it is not overwritten.
std::string sentenceOfBlocking(const Kiln::Exception& problem);

}  // namespace Effect
