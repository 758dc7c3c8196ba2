// What screen readers are told where Qt's own widgets tell too little: roles of drawn and grouping widgets, names of
// combo boxes, and news.
#pragma once

#include <QAccessible>

class QComboBox;
class QWidget;

namespace Window {

// The role of a widget that Qt takes for mere filling.
void setRole(QWidget& widget, QAccessible::Role role);

// The position in a combo box's list that is chosen. Lists that were never open know nothing of it.
void showChosen(QComboBox& combo);

// Tells the text of a label that has appeared or changed, wherever the focus is.
void announce(QWidget& label);

// Must be called before any widget is asked for.
void installReaders();

}  // namespace Window
