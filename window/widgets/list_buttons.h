// Which buttons of the tab act on the selected entry of which list.
#pragma once

#include "formats/names.h"

namespace Window {

// The ids; empty where there is no such button.
struct ListButtons {
  Formats::Name list;
  Formats::Name add;
  Formats::Name edit;
  Formats::Name remove;
};

inline constexpr ListButtons listsWithButtons[] = {
    {Formats::WidgetId::watermarkList, Formats::WidgetId::watermarkAdd, Formats::WidgetId::watermarkEdit,
     Formats::WidgetId::watermarkDelete},
    {Formats::WidgetId::overlayList, {}, {}, Formats::WidgetId::overlayDelete},
};

// Null for other lists.
constexpr const ListButtons* buttonsOfList(Formats::Name list) {
  for (const ListButtons& each : listsWithButtons)
    if (each.list == list) return &each;
  return nullptr;
}

// Those of the list whose entry that button deletes; null for other buttons.
constexpr const ListButtons* listOfDelete(Formats::Name button) {
  for (const ListButtons& each : listsWithButtons)
    if (!button.empty() && each.remove == button) return &each;
  return nullptr;
}

}  // namespace Window
