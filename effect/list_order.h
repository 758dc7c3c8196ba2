// The sort order of the watermark list and the overlay list.
#pragma once

#include "kiln/widgets.h"

namespace Effect {

// Sorts the entries from index `fixed` on by their displayed labels, case-insensitively, unit by unit, a prefix before
// longer labels. The sort is stable and keeps the item objects.
void orderByLabel(Kiln::XUL::ListData& list, std::int32_t fixed);

}  // namespace Effect
