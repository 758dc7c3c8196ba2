// "Print into overlay...": makes an overlay of the job's first page, with the current settings.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void printIntoOverlay(const ActionWorld& world);

}  // namespace Window
