// Number parsing and formatting.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Effect {

// The decimal integer at the start of a text, after optional white space and a sign; 0 when there is none. Values
// beyond 32 bits are clamped.
std::int32_t leadingInteger(std::u16string_view text);

// The decimal number at the start of a text, after optional white space and a sign, with an optional fraction and
// exponent; 0 when there is none. Never infinite.
double leadingNumber(std::u16string_view text);

std::u16string decimalText(std::int64_t number);

}  // namespace Effect
