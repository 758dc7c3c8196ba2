#pragma once

#include <string>

namespace Press {

/// The bytes of a small job to try effects on: a letter with a chart, a colour test page with an arrow that shows which
/// way is up, an A3 plan, and a form whose page is turned. Always the same bytes.
std::string samplePdf();

}  // namespace Press
