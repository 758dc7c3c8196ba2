// Push buttons, check boxes and radio buttons.
#pragma once

#include "host/widgets/input.h"
#include "window/widgets/shown_tree.h"

#include <functional>

class QPushButton;

namespace Window {

QWidget* buildButton(Refhost::Button& node, ShownTree& tree, QWidget* parent);
QWidget* buildCheckBox(Refhost::CheckBox& node, ShownTree& tree, QWidget* parent);
QWidget* buildRadio(Refhost::RadioButton& node, ShownTree& tree, QWidget* parent);

// Shows a node in a given button, whose clicks call `press`.
void showIn(QPushButton& button, const Refhost::WidgetNode& node, ShownTree& tree, std::function<void()> press);

// Makes the radio buttons built in `box` from now on, at any depth, one group for arrow keys and Tab.
void groupRadiosIn(QWidget& box);

}  // namespace Window
