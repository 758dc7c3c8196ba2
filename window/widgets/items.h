// The items of a list box or a combo box, shown in Qt's.
#pragma once

#include "kiln/widgets.h"

class QComboBox;

namespace Window {

class ItemList;

// Replaces the items shown, with text, colour and picture. Selects none.
void showItems(ItemList& list, Kiln::XUL::ListData& items);
void showItems(QComboBox& combo, Kiln::XUL::ListData& items);

}  // namespace Window
