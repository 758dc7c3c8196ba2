#pragma once

#include "press/marks/properties.h"

#include <cstdint>
#include <string>

namespace Press {

// The position of a mark on the displayed page.
enum class Across { left, centre, right };
enum class Down { upper, centre, lower };

// A text printed across pages.
struct Watermark {
  std::string text;  // UTF-8, one line; empty for no watermark
  std::string face = "Arial";
  bool isBold = false;
  bool isItalic = false;
  double size = 72;                 // points
  std::uint32_t colour = 0x808080;  // 0xRRGGBB
  double angle = 0;                 // degrees clockwise on the displayed page; 315 rises to the upper right
  Across across = Across::centre;
  Down down = Down::centre;
  bool isOutlined = false;   // draws the letters' outlines only
  double transparency = 0;   // per cent: 0 is opaque, 100 is invisible
  bool fitsPage = true;      // shrinks a mark that is larger than its page
  bool firstOnly = false;    // on the job's first page only
  bool onEachPage = false;   // with several pages per sheet: on each page instead of once per sheet
  bool isUnderPage = false;  // below the page's content instead of above it

  friend bool operator==(const Watermark&, const Watermark&) = default;
};

// Reads the watermark from a ticket's properties by name. Unless `Watermark` is "Watermark" there is none, and its
// text is empty. Missing or empty properties have defaults. Throws Error with the property's name for an invalid
// value.
Watermark watermarkFromProperties(const Properties& properties);

}  // namespace Press
