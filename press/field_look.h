#pragma once

#include <string>
#include <vector>

#include "press/page_content.h"

namespace Press {

/// What is written in a form field, and how.
struct FieldText {
  std::vector<std::string> lines;  ///< UTF-8.
  std::string face = "Helvetica";
  bool isBold = false;
  bool isItalic = false;
  double size = 0;     ///< Points; 0 makes it fit the field.
  std::string colour;  ///< Content that sets the colour to fill with; empty is black.
  int alignment = 0;   ///< 0 to the left, 1 in the middle, 2 to the right.
  bool flows = false;  ///< From the top downwards, lines that are too long being broken.
  int cells = 0;       ///< As many boxes of the same width take a letter each; 0 without.
};

/// The field's rectangle.
struct FieldFrame {
  double width = 0, height = 0;
  std::string background;  ///< Content that sets the colour to fill with; empty leaves it bare.
  std::string border;      ///< Content that sets the colour of its border; empty draws none.
  double borderWidth = 1;
};

/// The field as a form, from 0, 0 to its width and height. The text is drawn as shapes, so that it can be of any
/// script.
QPDFObjectHandle fieldLook(PageContent& content, const FieldFrame& frame, const FieldText& text);

}  // namespace Press
