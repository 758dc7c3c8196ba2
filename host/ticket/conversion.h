// Properties into a PrintTicket and back, as a schema says. Only the schema knows what the properties mean.
//
// A value that its public form cannot hold as it is (an angle of 360, where the public type ends at 359) is written
// twice: as the nearest public value, for everybody, and as it is, in a parameter of the schema's own. When the ticket
// is read, the second counts only while the first is still what it stood for: a change that somebody made to the ticket
// wins.
//
// What the schema has, but the property tree has not, is neither written nor read.
#pragma once

#include "host/ticket/schema.h"
#include "kiln/property.h"

#include <string>
#include <utility>
#include <vector>

namespace Refhost {

// Adds to `root` what the schema makes of the properties, and makes it the root of a valid document. Settings of a
// wider scope than `level` are left out. Throws std::runtime_error, one sentence, and leaves `root` as it was, for a
// value that the ticket cannot carry.
void writeTicket(const TicketSchema& schema, Kiln::Property& properties, Kiln::PTLevel level, Node& root);

// What the ticket says: properties, each with its value. Throws DocumentError.
std::vector<std::pair<std::u16string, std::u16string>> readTicket(const TicketSchema& schema,
                                                                  Kiln::Property& properties, const Node& root);

// A property's value in the public form of its parameter, or what stands in for it; nothing when there is neither.
std::optional<std::u16string> publicValue(const ParameterMapping& parameter, std::u16string_view value);

}  // namespace Refhost
