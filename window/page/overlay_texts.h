// What the page panel says about overlays, in the user's language.
#pragma once

#include "window/language/texts.h"
#include "window/page/page_artist.h"

#include <QString>

namespace Window {

class OverlayTexts {
 public:
  OverlayTexts() = default;
  explicit OverlayTexts(const Texts& texts);

  // A sentence a line: which overlays are printed on which pages, and what is left out and why. Empty when there is
  // nothing to say.
  QString sentences(const OverlaySummary& overlays) const;

 private:
  QString trouble(Press::OverlayTrouble::Kind kind) const;

  QString byPage;
  QString bySheet;
  QString onNoPage;
  QString noPages;
  QString namesNoPage;
  QString folder;
  QString noneAssigned;
};

}  // namespace Window
