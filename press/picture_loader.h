#pragma once

#include <filesystem>
#include <string>

#include "press/pictures.h"

namespace Press {

/// Draws a page of a PDF file held in memory, as a printed page is (`printPage`). Pages count from 1; dpi are pixels to
/// an inch. The library that draws is loaded from the program's own folder by the first call and stays loaded. Throws
/// `Error`.
Picture drawPage(const std::string& pdf, int page, double dpi);

/// Draws a page and saves it as a PNG file.
void drawPageToPng(const std::string& pdf, int page, double dpi, const std::filesystem::path& png);

}  // namespace Press
