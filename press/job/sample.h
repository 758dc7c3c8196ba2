#pragma once

#include <string>

namespace Press {

// A small sample job: a letter with a chart, a colour test page with an arrow that points up, an A3 plan, and a form
// on a rotated page. Always the same bytes.
std::string samplePdf();

}  // namespace Press
