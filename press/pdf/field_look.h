#pragma once

#include "press/pages/content.h"

#include <string>
#include <vector>

namespace Press {

// The content and style of a form field.
struct FieldText {
  std::vector<std::string> lines;  // UTF-8
  std::string face = "Helvetica";
  bool isBold = false;
  bool isItalic = false;
  double size = 0;     // points; 0 fits the text into the field
  std::string colour;  // content that sets the fill colour; empty for black
  int alignment = 0;   // 0 left, 1 centre, 2 right
  bool flows = false;  // multi-line: starts at the top and wraps long lines
  int cells = 0;       // the number of equal cells with one letter each; 0 for none
};

// The field's rectangle.
struct FieldFrame {
  double width = 0, height = 0;
  std::string background;  // content that sets the fill colour; empty for no background
  std::string border;      // content that sets the border colour; empty for no border
  double borderWidth = 1;
};

// Draws the field as a form XObject from (0, 0) to its width and height. Text is drawn as outlines, to support all
// scripts.
QPDFObjectHandle fieldLook(PageContent& content, const FieldFrame& frame, const FieldText& text);

}  // namespace Press
