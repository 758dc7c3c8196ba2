#pragma once

#include "formats/sentences.h"
#include "press/marks/overlay.h"
#include "press/marks/properties.h"
#include "press/marks/watermark.h"

#include <string>
#include <string_view>
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

  // Whether any effect can change a page; whether any page effect can, and whether one paints over the page.
  bool any() const;
  bool anyPageEffect() const;
  bool anyPaint() const;

  // Whether the result can depend on a page's number in the job.
  bool dependOnPlace() const;

  friend bool operator==(const Effects&, const Effects&) = default;
};

// How an effect moves the displayed page.
enum class Flip { none, leftAndRight, halfTurn };

// Paint over the whole sheet, blank paper included, in a blend mode of RGB.
struct Paint {
  std::string_view name;       // of the graphics state in a page's resources, unless the page has such a name
  std::string_view blendMode;  // a name of PDF; empty for no paint
  std::string_view colour;     // the operator that sets it
};

// What a page effect does when it is on.
struct PageEffect {
  bool Effects::* isOn;
  Formats::PageEffect setting;
  std::string_view result;  // the template that completes the sentence "every page is" of a dry run
  Flip flip = Flip::none;
  bool isForA3LedgerAlone = false;
  Paint paint = {};
};

// In the order in which they are done to a page. docs/adding-an-effect.md tells how to add one.
inline constexpr PageEffect pageEffects[] = {
    {.isOn = &Effects::mirrorImage,
     .setting = Formats::PageEffects::mirrorImage,
     .result = Formats::sentenceTemplate("mirrored, left and right exchanged"),
     .flip = Flip::leftAndRight},
    {.isOn = &Effects::rotate180,
     .setting = Formats::PageEffects::rotate180,
     .result = Formats::sentenceTemplate("turned half round"),
     .flip = Flip::halfTurn},
    {.isOn = &Effects::rotate180ForA3Ledger,
     .setting = Formats::PageEffects::rotate180ForA3LD,
     .result = Formats::sentenceTemplate("turned half round, as A3 and Ledger are"),
     .flip = Flip::halfTurn,
     .isForA3LedgerAlone = true},
    {.isOn = &Effects::negativeImage,
     .setting = Formats::PageEffects::negativeImage,
     .result = Formats::sentenceTemplate("printed in negative"),
     .paint = {"/KilnNegative", "/Difference", "1 1 1 rg"}},
};

// Reads the effects from a ticket's properties by name. A property that is missing or does not have its "on" value is
// off; unknown names are ignored.
Effects effectsFromProperties(const Properties& properties);

}  // namespace Press
