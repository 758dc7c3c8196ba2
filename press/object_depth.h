#pragma once

#include <qpdf/QPDFObjectHandle.hh>

namespace Press {

/// Whether following an object to all that it refers to leads deeper than the library can go when it copies the object
/// into another document.
bool isNestedTooDeeply(const QPDFObjectHandle& object);

}  // namespace Press
