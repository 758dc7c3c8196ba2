// "Report a problem...": saves what the user did, and the settings, as one file to send.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void reportProblem(const ActionWorld& world);

}  // namespace Window
