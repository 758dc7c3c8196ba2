// The watermark editor dialog.
#pragma once

#include "kiln/dom.h"
#include "kiln/gui.h"
#include "kiln/host.h"

namespace Effect {

// Lets the user edit the record, which the caller owns, and returns when the dialog has closed: true when it was
// accepted. A dialog that cannot be loaded is one that was cancelled.
bool editWatermark(Kiln::Host& host, Kiln::XUL::GUI& gui, const Kiln::SmartPtr<Kiln::Dom::INode>& record, bool isNew);

}  // namespace Effect
