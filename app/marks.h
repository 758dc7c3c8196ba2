// Chooses watermarks and overlays for a command line, by display names.
#pragma once

#include "app/silent_run.h"

#include <string>
#include <vector>

namespace App {

// All throw std::runtime_error, one sentence, when a mark cannot be chosen.

// Chooses the watermark with this displayed name, like a click in the tab's list.
void chooseWatermark(SilentRun& run, const std::string& name);

// Chooses overlays as a user would: one for all pages in the tab's list, others in the dialog for several overlays.
// Each word is "NAME" or "NAME:PAGES" with All, Even, Odd or a list of pages such as 1,3,5-9. An overlay whose name
// contains the colon takes precedence.
void chooseOverlays(SilentRun& run, const std::vector<std::string>& words);

// Tells the user when `settings` are those of a watermark, but the watermark is off, so that they have no effect.
void warnOfMissingWatermark(SilentRun& run, const Refhost::TracePairs& settings);

}  // namespace App
