#pragma once

#include "press/pdf/qpdf.h"

namespace Press {

// Preserves the visibility of a document's layers when parts of it are copied into another document. Both must stay
// open until the other one is written. Throws when a layer cannot be read.
void takeLayers(QPDF& from, QPDF& to);

}  // namespace Press
