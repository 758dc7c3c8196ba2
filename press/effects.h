#pragma once

#include <map>
#include <string>
#include <vector>

#include "press/overlay.h"
#include "press/watermark.h"

namespace Press {

/// What is done to a job as it is printed. docs/printing.md has the order.
struct Effects {
  bool mirrorImage = false;           ///< Left and right exchanged, as the page is seen.
  bool negativeImage = false;         ///< Every colour turned into its opposite, bare paper into black.
  bool rotate180 = false;             ///< Every page turned half round.
  bool rotate180ForA3Ledger = false;  ///< Pages of A3 or Ledger size turned half round; never a second time.
  Watermark watermark = {};
  std::vector<Overlay> overlays = {};  ///< The lowest first.
  bool overlaysOverPage = false;       ///< Over the page's content instead of under it.
  bool overlaysOnEachPage = false;     ///< With several pages on a sheet: on each of them, not once on the sheet.
  int pagesOnSheet = 1;                ///< 1, 2 or 4.

  /// What is wrong with the properties that these were read from: a sentence that printing fails with. Mostly empty.
  std::string refusal = {};

  /// Whether a page can come out different from how it went in.
  bool any() const;
  /// Whether it can matter where in the job a page stands.
  bool dependOnPlace() const;
};

bool operator==(const Effects& a, const Effects& b);
inline bool operator!=(const Effects& a, const Effects& b) { return !(a == b); }

/// Reads the effects from the properties of a ticket, by property name. A property that is absent or holds anything
/// but its own word for "on" is off; names that are not effects are passed over.
Effects effectsFromProperties(const std::map<std::string, std::string>& properties);

}  // namespace Press
