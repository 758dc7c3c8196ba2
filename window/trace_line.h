// One line for each trace event.
#pragma once

#include "host/trace.h"

#include <QString>

namespace Window {

// The event as one line of JSON, its members in their order.
QString traceLine(const Refhost::TraceEvent& event);

}  // namespace Window
