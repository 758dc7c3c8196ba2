// What the host holds, as scripts read it.
#pragma once

#include "host/model/properties.h"
#include "host/trace.h"
#include "host/widgets/widget.h"
#include "script/json.h"

namespace Script {

// A widget's state: the members that every kind has, then those of its own.
Json describe(Refhost::WidgetNode& widget);

// An event of the trace: its "op", then its members.
Json describe(const Refhost::TraceEvent& event);

// Names and values, as the members of an object.
Json describe(const Refhost::TracePairs& values);

}  // namespace Script
