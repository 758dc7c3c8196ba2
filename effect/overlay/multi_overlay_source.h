// The list of overlays to choose from, in the dialog for several overlays, and the buttons that add the selected one.
#pragma once

#include "effect/overlay/multi_overlay_context.h"

#include <string_view>

namespace Kiln::XUL {

class MultiOverlaySource final : public SignalTarget {
 public:
  explicit MultiOverlaySource(const MultiOverlayContext& shared) : context(shared) {}

  void connectList();

  // Fills the list with the overlays of the tab's list.
  void fill();

  // Empty when nothing is selected.
  SmartPtr<ListItem> selectedItem() const;

  // The item with that value; empty when there is none.
  SmartPtr<ListItem> itemOf(std::u16string_view value) const;

  // Selects the item of an overlay of the tab's list.
  void select(ListItem& overlay);

  // The item of the tab's list for the overlay of a first assignment; empty when there is none.
  SmartPtr<ListItem> defaultOverlay() const;

  // Enables the buttons that add, while an overlay is selected.
  void refreshButtons() const;

 private:
  void onSourceChange(EventArg<ListBox> event);
  SmartPtr<ComboBox> overlaysOfTab() const;

  const MultiOverlayContext& context;
  SmartPtr<ListBox> list;
};

}  // namespace Kiln::XUL
