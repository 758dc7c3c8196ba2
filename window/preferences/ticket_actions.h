// Opening and saving PrintTickets.
#pragma once

#include "window/preferences/action_world.h"

namespace Window {

void openTicket(const ActionWorld& world);
void saveTicket(const ActionWorld& world);

}  // namespace Window
