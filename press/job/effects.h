#pragma once

#include "press/marks/overlay.h"
#include "press/marks/properties.h"
#include "press/marks/watermark.h"

#include <string>
#include <vector>

namespace Press {

// The effects to print a job with. docs/printing.md describes the order.
struct Effects {
  bool mirrorImage = false;           // exchanges left and right of the displayed page
  bool negativeImage = false;         // inverts all colours; blank paper becomes black
  bool rotate180 = false;             // rotates every page by 180 degrees
  bool rotate180ForA3Ledger = false;  // the same for A3 and Ledger pages alone; nothing to add to rotate180
  Watermark watermark = {};
  std::vector<Overlay> overlays = {};  // from bottom to top
  bool overlaysOverPage = false;       // above the page's content instead of below it
  bool overlaysOnEachPage = false;     // with several pages per sheet: on each page instead of once per sheet
  int pagesOnSheet = 1;                // 1, 2 or 4

  // Error to throw when printing, for properties that cannot be applied; usually empty.
  std::string refusal = {};

  // What is left out of the overlays as chosen, or refused; usually nothing.
  std::vector<OverlayTrouble> overlayTroubles = {};

  // Whether any effect can change a page.
  bool any() const;

  // Whether the result can depend on a page's number in the job.
  bool dependOnPlace() const;

  friend bool operator==(const Effects&, const Effects&) = default;
};

// Reads the effects from a ticket's properties by name. A property that is missing or does not have its "on" value is
// off; unknown names are ignored.
Effects effectsFromProperties(const Properties& properties);

}  // namespace Press
