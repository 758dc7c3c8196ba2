#pragma once

#include "press/pdf/qpdf.h"

namespace Press {

// Whether copying the object into another document would exceed the library's recursion depth.
bool isNestedTooDeeply(const QPDFObjectHandle& object);

}  // namespace Press
