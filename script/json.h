// JSON as answers and traces are written.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace Script {

// Members keep the order in which they were added. Texts are UTF-8 in which an unpaired surrogate is three bytes of its
// own, as Refhost::toNarrow makes it.
using Json = nlohmann::ordered_json;

// A wide text as a value.
Json text(std::u16string_view wide);

// One line without its end: UTF-8, an unpaired surrogate as its \uDXXX escape, a byte that is no text as U+FFFD.
std::string toLine(const Json& value);

}  // namespace Script
