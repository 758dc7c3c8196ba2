// PrintCapabilities: what a model can do, in the words of the schema that its tickets are made with.
#pragma once

#include "host/model/properties.h"
#include "host/ticket/schema.h"

namespace Refhost {

// The root of the document: each feature of a property that the model has, with the options that the model lists and
// whether each can be chosen now; each parameter, with its type, range, unit and default.
Kiln::SmartPtr<Node> capabilitiesOf(const TicketSchema& schema, const PropertyModel& model);

}  // namespace Refhost
