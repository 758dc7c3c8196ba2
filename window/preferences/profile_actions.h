// Profile export and import.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void exportProfile(const ActionWorld& world);
void importProfile(const ActionWorld& world);

}  // namespace Window
