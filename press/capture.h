#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "press/effects.h"

namespace Press {

/// The picture that belongs to an overlay's file: in the same folder, the same name with the ending ".bmp".
std::filesystem::path thumbnailOf(const std::filesystem::path& overlay);

/// Makes an overlay of a job: its first page as printed with these effects goes into `destination`, as a PDF of one
/// page that is complete in itself, and a small picture of it beside that (`thumbnailOf`). Both files are replaced
/// whole, or, when anything fails, stay as they were; a page that cannot be drawn has no picture. Folders are not made.
/// Returns sentences as `printPdf` does, and one when there is no picture. Throws `Error`.
std::vector<std::string> captureOverlay(const std::filesystem::path& in, const std::filesystem::path& destination,
                                        const Effects& effects = {});

}  // namespace Press
