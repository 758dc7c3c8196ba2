#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "press/page_rule.h"

namespace Press {

/// A form that is printed on pages: the first page of a PDF file.
struct Overlay {
  std::filesystem::path file;
  PageRule pages;

  friend bool operator==(const Overlay& a, const Overlay& b) { return a.file == b.file && a.pages == b.pages; }
};

/// Reads the overlays from the properties of a ticket, by property name, the lowest first. `OverlayImage` says whether
/// `OverlaySourceFileName` is one file or several as "file;pages$file;pages$". Throws `Error` when that value cannot be
/// understood.
std::vector<Overlay> overlaysFromProperties(const std::map<std::string, std::string>& properties);

}  // namespace Press
