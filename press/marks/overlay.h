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
// `OverlaySourceFileName` is one file or a list "file;pages$file;pages$"; it is one file, too, when `OverlaySel` is
// that file's name, since a ticket does not distinguish the two. Throws Error for an invalid value.
//
// What a user can enter as a list of pages is never an error: its items that name no page count for nothing, and an
// overlay without pages is left out. overlayTroubles tells of both.
std::vector<Overlay> overlaysFromProperties(const Properties& properties);

// What does not print as chosen.
struct OverlayTrouble {
  enum class Kind {
    noPages,       // an overlay without pages
    namesNoPage,   // the items in `text` name no page
    folder,        // one of several overlays, in a folder with "$" or ";" in its name
    noneAssigned,  // several overlays are chosen, but the list is empty; has no file
  };
  Kind kind = Kind::noneAssigned;
  std::filesystem::path file = {};
  std::string text = {};

  friend bool operator==(const OverlayTrouble&, const OverlayTrouble&) = default;
};

// The troubles in a ticket's properties, in their order; usually none.
std::vector<OverlayTrouble> overlayTroubles(const Properties& properties);

}  // namespace Press
