#pragma once

#include "press/text/faces.h"

#include <hb.h>

#include <string>
#include <vector>

namespace Press {

// A part of a line that is shaped at once.
struct TextRun {
  std::size_t begin = 0, end = 0;  // in characters of the text
  const Face* face = nullptr;
  hb_script_t script = HB_SCRIPT_COMMON;
  hb_direction_t direction = HB_DIRECTION_LTR;
};

// The runs of a line in visual order, from left to right. `faces` has the face of each character.
std::vector<TextRun> runsOf(const std::u32string& text, const std::vector<const Face*>& faces);

}  // namespace Press
