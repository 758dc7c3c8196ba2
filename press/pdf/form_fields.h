#pragma once

#include "press/pdf/document.h"

namespace Press {

// Generates appearances from the values of printable form fields: for all fields if the document has /NeedAppearances,
// otherwise for fields without one. Fields beyond a few thousand are left unchanged.
void drawWaitingFields(Document& document);

}  // namespace Press
