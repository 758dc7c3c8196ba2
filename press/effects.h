#pragma once

#include <map>
#include <string>

namespace Press {

/// What is done to every page of a job as it is printed.
struct Effects {
  bool mirrorImage = false;           ///< Left and right exchanged, as the page is seen.
  bool negativeImage = false;         ///< Every colour turned into its opposite, bare paper into black.
  bool rotate180 = false;             ///< Every page turned half round.
  bool rotate180ForA3Ledger = false;  ///< Pages of A3 or Ledger size turned half round; never a second time.

  /// Whether a page can come out different from how it went in.
  bool any() const { return mirrorImage || negativeImage || rotate180 || rotate180ForA3Ledger; }
};

inline bool operator==(const Effects& a, const Effects& b) {
  return a.mirrorImage == b.mirrorImage && a.negativeImage == b.negativeImage && a.rotate180 == b.rotate180 &&
         a.rotate180ForA3Ledger == b.rotate180ForA3Ledger;
}

/// Reads the effects from the properties of a ticket, by property name. A property that is absent or holds anything
/// but its own word for "on" is off; names that are not effects are passed over.
Effects effectsFromProperties(const std::map<std::string, std::string>& properties);

}  // namespace Press
