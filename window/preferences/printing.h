// "Print...": prints the job to a PDF file, or on a printer of the system.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void print(const ActionWorld& world);

}  // namespace Window
