// Watermarks and overlays chosen from a command line, by the names that people see.
#pragma once

#include "app/silent_run.h"

#include <map>
#include <string>
#include <vector>

namespace App {

// All throw std::runtime_error, one sentence, when a mark cannot be chosen.

// Chooses the watermark that the tab shows under this name, as a click in its list would.
void chooseWatermark(SilentRun& run, const std::string& name);

// Chooses overlays as a user would: one for all pages in the tab's list, others in the dialog for several overlays.
// Each word is "NAME" or "NAME:PAGES" with All, Even, Odd or a list of pages such as 1,3,5-9. A name with a colon of
// its own counts where there is an overlay of that name.
void chooseOverlays(SilentRun& run, const std::vector<std::string>& words);

// What people call the overlays that the tab lists, by the names of their files; nothing where it has no such list.
std::map<std::string, std::string> overlayNames(SilentRun& run);

}  // namespace App
