#pragma once

#include "press/pictures/picture.h"

#include <filesystem>
#include <string>

namespace Press {

// Draws a page of an in-memory PDF file (see `printPage`). Pages count from 1; dpi are pixels per inch. The first call
// loads the drawing library from the program's folder, and it stays loaded. Throws Error.
Picture drawPage(const std::string& pdf, int page, double dpi);

// Draws a page to a PNG file.
void drawPageToPng(const std::string& pdf, int page, double dpi, const std::filesystem::path& png);

}  // namespace Press
