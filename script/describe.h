// The host's objects as JSON for scripts.
#pragma once

#include "host/model/properties.h"
#include "host/trace.h"
#include "host/widgets/widget.h"
#include "script/json.h"

namespace Script {

// A widget's state: the common members first, then those of its kind.
Json describe(Refhost::WidgetNode& widget);

// An event of the trace: its "op", then its members.
Json describe(const Refhost::TraceEvent& event);
Json describe(const Refhost::TraceValue& value);

// Names and values as an object.
Json describe(const Refhost::TracePairs& values);

}  // namespace Script
