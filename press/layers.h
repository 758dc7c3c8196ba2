#pragma once

#include <qpdf/QPDF.hh>

namespace Press {

/// Sees to it that each layer of a document is seen, or not, as it was there when parts of that document are put into
/// another one. Both must be open until the other one is written. Throws when a layer cannot be read.
void takeLayers(QPDF& from, QPDF& to);

}  // namespace Press
