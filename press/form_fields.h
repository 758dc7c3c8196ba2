#pragma once

#include "press/document.h"

namespace Press {

/// Gives form fields that print the look that the document leaves to the reader to give them, from their values: all
/// fields where it asks for that, otherwise those that have none. Fields beyond a few thousand stay as they are.
void drawWaitingFields(Document& document);

}  // namespace Press
