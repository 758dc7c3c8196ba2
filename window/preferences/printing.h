// "Print...": prints the job to a PDF.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void print(const ActionWorld& world);

}  // namespace Window
