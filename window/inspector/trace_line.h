// Formats trace events.
#pragma once

#include "host/trace.h"

#include <QString>

namespace Window {

// The event as one line of JSON, with its members in order.
QString traceLine(const Refhost::TraceEvent& event);

}  // namespace Window
