// Access keys of controls whose texts name none.
#pragma once

class QWidget;

namespace Window {

// A property of buttons that other keys press, such as Escape.
inline constexpr const char* keysElsewhere = "keysElsewhere";

// A property of buttons that get what the others leave.
inline constexpr const char* keyAfterOthers = "keyAfterOthers";

// Gives each visible button and labelled field of the window that has no access key or shortcut one that nothing else
// in the window has: a letter of its text, or one in brackets after it. Leaves out what Return and Escape press in
// dialogs, and buttons with `keysElsewhere`. Names what has such a text for screen readers, without the brackets. To be
// called again when texts were set anew, or others have become visible.
void giveAccessKeys(QWidget& window);

}  // namespace Window
