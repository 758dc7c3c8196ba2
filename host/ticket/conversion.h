// Converts properties to a PrintTicket and back, driven by a schema. Only the schema knows the properties' meaning.
//
// A value that its public form cannot represent (an angle of 360, where the public type ends at 359) is written twice:
// the nearest public value for other readers, and the exact value in a parameter of the schema's own. On reading, the
// exact value is used only if the public one is unchanged, so that edits of the ticket win.
//
// Entries of the schema whose properties do not exist are neither written nor read.
#pragma once

#include "host/ticket/schema.h"
#include "kiln/property.h"

#include <string>
#include <utility>
#include <vector>

namespace Refhost {

// Converts the properties and adds them to `root`, which becomes the root of a valid document. Omits settings of a
// wider scope than `level`. Throws std::runtime_error, one sentence, and leaves `root` unchanged, when a value cannot
// be represented.
void writeTicket(const TicketSchema& schema, Kiln::Property& properties, Kiln::PTLevel level, Node& root);

// The properties in the ticket and their values. Throws DocumentError.
std::vector<std::pair<std::u16string, std::u16string>> readTicket(const TicketSchema& schema,
                                                                  Kiln::Property& properties, const Node& root);

// A property's value in its parameter's public form, or the stand-in; nothing when there is neither.
std::optional<std::u16string> publicValue(const ParameterMapping& parameter, std::u16string_view value);

}  // namespace Refhost
