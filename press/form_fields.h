#pragma once

#include "press/document.h"

namespace Press {

/// Gives form fields an appearance where the document leaves it to the reader to draw them from their values, so that
/// they can be printed. Whether it did anything; the page tree may then be another.
bool drawWaitingFields(Document& document);

}  // namespace Press
