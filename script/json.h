// The JSON of answers and traces.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace Script {

// Members keep their insertion order. Texts are UTF-8, with unpaired surrogates as three bytes (see Formats::toUtf8).
using Json = nlohmann::ordered_json;

// A wide text as a JSON value.
Json text(std::u16string_view wide);

// One line without a line break: UTF-8, unpaired surrogates as \uDXXX escapes, invalid bytes as U+FFFD.
std::string toLine(const Json& value);

}  // namespace Script
