#pragma once

#include "press/marks/properties.h"
#include "press/pages/page_list.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Press {

// A form to print on pages: the first page of a PDF file.
struct Overlay {
  std::filesystem::path file;
  PageRule pages;

  friend bool operator==(const Overlay&, const Overlay&) = default;
};

// Reads the overlays from a ticket's properties by name, from bottom to top. `OverlayImage` tells whether
// `OverlaySourceFileName` is one file or a list "file;pages$file;pages$". Throws Error for an invalid value.
std::vector<Overlay> overlaysFromProperties(const Properties& properties);

}  // namespace Press
