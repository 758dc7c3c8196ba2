// The user's actions on presets.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void savePreset(const ActionWorld& world);
void choosePreset(const ActionWorld& world, const QString& name);

// Of the chosen preset.
void renamePreset(const ActionWorld& world);
void deletePreset(const ActionWorld& world);

}  // namespace Window
