#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "press/effects.h"

namespace Press {

/// An overlay that has been made of a job.
struct Capture {
  std::string pdf;                       ///< The bytes of a PDF of one page that is complete in itself.
  std::optional<std::string> thumbnail;  ///< A small picture of it, as the bytes of a BMP file; none when the page
                                         ///< cannot be drawn.
  std::vector<std::string> notes;        ///< Sentences as `printPdf` has them, and one when there is no picture.
};

/// Makes an overlay of a job: its first page as printed with these effects. Throws `Error`.
Capture captureOverlay(const std::filesystem::path& in, const Effects& effects = {});

}  // namespace Press
