// The sort order of the watermark list and the overlay list.
#pragma once

#include "kiln/widgets.h"

namespace Effect {

// Sorts the entries from index `fixed` on by their displayed labels, case-insensitively, unit by unit, a prefix before
// longer labels. The sort is stable and keeps the item objects.
void orderByLabel(Kiln::XUL::ListData& list, std::int32_t fixed);

// The lower-case form of a UTF-16 unit in the Latin, Greek and Cyrillic scripts; any other unit unchanged.
char16_t lowerCase(char16_t unit);

}  // namespace Effect
