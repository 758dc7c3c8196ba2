// "Bring back built-in watermarks...": offers those that the user has deleted.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void bringBackWatermarks(const ActionWorld& world);

}  // namespace Window
