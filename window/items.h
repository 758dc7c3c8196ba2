// The items of a list box or a combo box, shown in Qt's.
#pragma once

#include "kiln/widgets.h"

class QComboBox;
class QListWidget;

namespace Window {

// The height of a row of such a list, with room above and below the text.
int rowHeight(const QListWidget& list);

// Replaces what is shown by these items: text, colour, picture. Leaves none selected.
void showItems(QListWidget& list, Kiln::XUL::ListData& items);
void showItems(QComboBox& combo, Kiln::XUL::ListData& items);

}  // namespace Window
