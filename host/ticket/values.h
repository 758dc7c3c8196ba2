// The values of parameters: what types there are, what is wrong with a text, and the two forms that a value has, one in
// the property and one in the ticket.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// How a parameter's value is written.
enum class ValueForm {
  text,     // xsd:string, the same in the property
  integer,  // xsd:integer, a plain decimal number in the property
  colour,   // xsd:string "#AARRGGBB" with the opacity AA; "#TTRRGGBB" with the transparency TT in the property
};

struct ValueType {
  ValueForm form = ValueForm::text;

  // The least and the greatest number, or of a text the fewest and the most characters; a colour has no range.
  std::int64_t least = 0;
  std::int64_t most = 0;
};

// What becomes of a number that the ticket's type does not have.
enum class OutOfRange {
  refused,
  wrapped,  // as angles are: one beyond the greatest is the least
  clamped,  // moved to the nearest
};

// What is wrong with a text as a value of the type in a ticket, as the end of a sentence that begins with the value's
// name; empty when nothing is.
std::string faultOf(const ValueType& type, std::u16string_view ticketText);

// A property's value as the ticket's type has it, or the nearest that it has; nothing when no value is near.
std::optional<std::u16string> ticketForm(const ValueType& type, OutOfRange outOfRange, std::u16string_view value);

// The property's value for a text without fault.
std::u16string propertyForm(const ValueType& type, std::u16string_view ticketText);

// A text's start in quotation marks, for a sentence.
std::string inQuotes(std::u16string_view text);

}  // namespace Refhost
