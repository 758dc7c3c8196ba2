#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace Press {

/// Where a mark lies on its page as the page is seen.
enum class Across { left, centre, right };
enum class Down { upper, centre, lower };

/// A text that is printed across pages.
struct Watermark {
  std::string text;  ///< UTF-8, one line. Empty: there is no watermark.
  std::string face = "Arial";
  bool isBold = false;
  bool isItalic = false;
  double size = 72;                 ///< Points.
  std::uint32_t colour = 0x808080;  ///< 0xRRGGBB.
  double angle = 0;                 ///< Degrees clockwise, as the page is seen. 315 climbs to the upper right.
  Across across = Across::centre;
  Down down = Down::centre;
  bool isOutlined = false;   ///< The letters' edges alone are drawn.
  double transparency = 0;   ///< Percent: 0 hides what lies under it, 100 cannot be seen.
  bool fitsPage = true;      ///< A mark that is larger than its page is made smaller until it fits.
  bool firstOnly = false;    ///< On the job's first page alone.
  bool onEachPage = false;   ///< With several pages on a sheet: on each of them, not once on the sheet.
  bool isUnderPage = false;  ///< Under the page's content instead of over it.
};

bool operator==(const Watermark& a, const Watermark& b);
inline bool operator!=(const Watermark& a, const Watermark& b) { return !(a == b); }

/// Reads the watermark from the properties of a ticket, by property name. Without `Watermark` = "Watermark" there is
/// none, and its text is empty. A property that is absent or empty has its default. Throws `Error`, with a sentence
/// that names the property, for a value that no watermark can have.
Watermark watermarkFromProperties(const std::map<std::string, std::string>& properties);

}  // namespace Press
