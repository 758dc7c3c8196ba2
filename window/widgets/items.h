// The items of a list box or a combo box, shown in Qt's.
#pragma once

#include "kiln/widgets.h"

class QComboBox;

namespace Window {

class ItemList;

// Show the items with text, colour and picture in place of those shown so far. In a list, the selected row stays
// selected if there still is one there; in a combo box, none is.
void showItems(ItemList& list, Kiln::XUL::ListData& items);
void showItems(QComboBox& combo, Kiln::XUL::ListData& items);

}  // namespace Window
