// Operates the watermark editor like a user.
#pragma once

#include "app/watermark_look.h"
#include "host/gui.h"

#include <optional>
#include <string>

namespace App {

// What to change of a watermark.
struct WatermarkEdit {
  std::optional<std::string> text;
  std::optional<std::string> name;
  WatermarkLook look;
};

// Fills the editor, and accepts it; whether it was accepted. Throws std::runtime_error, one sentence, when the editor
// does not take something.
bool editWatermark(Refhost::Dialog& dialog, const WatermarkEdit& edit);

}  // namespace App
