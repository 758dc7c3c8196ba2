// Parameter values: types, validation, and conversion between the property's and the ticket's form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// The representation of a parameter's value.
enum class ValueForm {
  text,     // xsd:string, the same in the property
  integer,  // xsd:integer, a plain decimal number in the property
  colour,   // xsd:string "#AARRGGBB" with the opacity AA; "#TTRRGGBB" with the transparency TT in the property
};

struct ValueType {
  ValueForm form = ValueForm::text;

  // The range of a number, or of a text's length in characters; unused for colours.
  std::int64_t least = 0;
  std::int64_t most = 0;
};

// The treatment of a number outside the ticket type's range.
enum class OutOfRange {
  refused,
  wrapped,  // modulo the range, for angles: past the maximum comes the minimum
  clamped,  // to the nearest valid number
};

// Why a text is not a valid ticket value of the type, as the end of a sentence that starts with the value's name; empty
// when it is valid.
std::string faultOf(const ValueType& type, std::u16string_view ticketText);

// A property's value in the ticket's form, exact or nearest; nothing when it cannot be represented.
std::optional<std::u16string> ticketForm(const ValueType& type, OutOfRange outOfRange, std::u16string_view value);

// The property's value for a valid ticket text.
std::u16string propertyForm(const ValueType& type, std::u16string_view ticketText);

// A text, truncated and in quotation marks, for a message.
std::string inQuotes(std::u16string_view text);

}  // namespace Refhost
