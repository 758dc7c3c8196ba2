// The order of the watermark list and the overlay list.
#pragma once

#include "kiln/widgets.h"

namespace Effect {

// Orders the entries from `fixed` on by their displayed labels, without regard to case, unit by unit, a shorter label
// before one that begins with it. Entries with equal labels keep their order; all stay the objects that they are.
void orderByLabel(Kiln::XUL::ListData& list, std::int32_t fixed);

// The lower-case form of a UTF-16 unit in the Latin, Greek and Cyrillic scripts; any other unit as it is.
char16_t lowerCase(char16_t unit);

}  // namespace Effect
