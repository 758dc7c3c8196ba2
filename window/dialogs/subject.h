// What a question before a deletion or a replacement is about.
#pragma once

#include "host/gui.h"

#include <QString>

namespace Window {

// The displayed name of the entry that the dialog would delete or replace; empty for other dialogs, and when the dialog
// shows the name itself. `tabs` may be null.
QString subjectOf(Refhost::Dialog& dialog, const Refhost::Gui* tabs, const Refhost::UserActions& actions);

}  // namespace Window
