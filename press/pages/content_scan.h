#pragma once

#include <string_view>

namespace Press {

// Whether page content is balanced, so that other content may precede and follow it: every `q` has a `Q` and vice
// versa, and text objects, marked content, paths, strings and brackets are closed.
//
// Conservative: returns false for unknown operators, inline images and anything that parsers read differently. Such
// content must be wrapped in a form, which is always correct.
bool standsAlone(std::string_view content);

}  // namespace Press
