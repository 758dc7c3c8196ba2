// Asks before something is deleted or replaced.
#pragma once

#include "window/language/texts.h"

class QWidget;

namespace Window {

// `verb` is on the button that does it; the other one, Cancel, is the one that Return presses.
struct DestructiveQuestion {
  QString title;
  QString sentence;
  QString verb;
};

bool askToGoOn(const DestructiveQuestion& question, const Texts& texts, QWidget* parent);

}  // namespace Window
