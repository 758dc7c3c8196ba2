// Locates an element in a document's text.
#pragma once

#include "host/documents/node.h"

#include <cstddef>
#include <string_view>

namespace Refhost {

// The line of the element's start tag, from 1, found by parsing the text again; 0 when the element is not in the
// document. `bytes` is the text that `root` was read from.
std::size_t lineOf(const Node& element, const Node& root, std::string_view bytes);

}  // namespace Refhost
