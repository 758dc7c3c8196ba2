// PrintCapabilities: a model's capabilities, in the vocabulary of its ticket schema.
#pragma once

#include "host/model/properties.h"
#include "host/ticket/schema.h"

namespace Refhost {

// The document's root: each feature of a property in the model, with the model's options and their current
// availability; each parameter, with type, range, unit and default.
Kiln::SmartPtr<Node> capabilitiesOf(const TicketSchema& schema, const PropertyModel& model);

}  // namespace Refhost
