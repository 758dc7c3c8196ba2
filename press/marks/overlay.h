#pragma once

#include "press/pages/rule.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Press {

// A form to print on pages: the first page of a PDF file.
struct Overlay {
  std::filesystem::path file;
  PageRule pages;

  friend bool operator==(const Overlay& a, const Overlay& b) { return a.file == b.file && a.pages == b.pages; }
};

// Reads the overlays from a ticket's properties by name, from bottom to top. `OverlayImage` tells whether
// `OverlaySourceFileName` is one file or a list "file;pages$file;pages$". Throws `Error` for an invalid value.
std::vector<Overlay> overlaysFromProperties(const std::map<std::string, std::string>& properties);

}  // namespace Press
