// What the user did, in words for the entries of undo and redo.
#pragma once

#include "host/user_actions.h"
#include "window/language/texts.h"

class QWidget;

namespace Window {

// Of a widget, the name that it has in `tabs`. Empty when the action has no name.
QString nameOf(const Refhost::UserAction& action, const Texts& texts, const QWidget& tabs);

}  // namespace Window
