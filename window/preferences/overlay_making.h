// "New..." and "Rename..." beside the list of overlays: overlays of files, without a job.
#pragma once

#include "window/preferences/action_world.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Press {
struct Capture;
}

namespace Window {

// Asks for a file, then as `newOverlayOf`.
void newOverlay(const ActionWorld& world);

// Asks for the page and the name, and makes an overlay of a PDF or a picture, which is chosen then.
void newOverlayOf(const ActionWorld& world, const std::filesystem::path& file);

// Stores a captured page under a name, or one that the user is asked for. Returns the name; nothing when there is no
// overlay: the user has cancelled or was told why. Throws std::runtime_error: one sentence.
std::optional<std::u16string> storeOverlay(const ActionWorld& world, const Press::Capture& capture,
                                           const std::optional<std::u16string>& name);

// Whether the chosen overlay can be renamed; and asks for its new name.
bool mayRenameOverlay(const ActionWorld& world);
void renameOverlay(const ActionWorld& world);

}  // namespace Window
