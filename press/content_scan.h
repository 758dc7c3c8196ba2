#pragma once

#include <string_view>

namespace Press {

/// Whether page content leaves everything as it found it, so that other content may be put before and after it: each
/// `q` has its `Q` and the other way round, text, marked content, paths, strings and brackets are closed.
///
/// Vouches only for what it understands: unknown words, inline images and anything that programs read in different
/// ways give false. Content without an answer has to be enclosed in a form of its own, which is always right.
bool standsAlone(std::string_view content);

}  // namespace Press
