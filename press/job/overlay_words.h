// Says in words which overlays are printed on which pages.
#pragma once

#include "press/job/effects.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Press {

// The overlay's name in the index beside its file; without one, the file's name.
std::string overlayName(const std::filesystem::path& file);

// Whether the pages of overlays are counted in sheets: several pages go on a sheet, and overlays once on each.
bool overlaysCountSheets(const Effects& effects);

// The overlays of a job of `pages` pages, in runs of pages (or sheets) that get the same ones:
// "1: Letterhead; 2-20: Continuation". Every other page of a long run is "1, 3, ..., 19". Empty when no page gets any.
std::string overlaysInWords(const Effects& effects, int pages);

// The names of the overlays that no page of such a job gets.
std::vector<std::string> overlaysOnNoPage(const Effects& effects, int pages);

// A sentence about each of the effects' overlay troubles that printing does not refuse.
std::vector<std::string> overlayNotes(const Effects& effects);

}  // namespace Press
