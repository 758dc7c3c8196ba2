// Numbers in texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Effect {

// The decimal number that a text begins with, white space and a sign in front of it allowed; 0 when it begins with
// none. What 32 bits cannot hold becomes the nearest number that they can.
std::int32_t leadingInteger(std::u16string_view text);

// The number, perhaps with a fraction and an exponent, that a text begins with, white space and a sign in front of it
// allowed; 0 when it begins with no digit. Never infinite.
double leadingNumber(std::u16string_view text);

std::u16string decimalText(std::int64_t number);

}  // namespace Effect
