// The list of overlays to choose from, in the dialog for several overlays, and the buttons that add the selected one.
#pragma once

#include "effect/overlay/multi_overlay_context.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Kiln::XUL {

class MultiOverlaySource final : public SignalTarget {
 public:
  explicit MultiOverlaySource(const MultiOverlayContext& shared) : context(shared) {}

  void connectList();

  // Fills the list with the overlays of the tab's list.
  void fill();

  // Nothing when no overlay is selected.
  std::optional<Effect::OverlayId> selected() const;

  // The overlay with that value; nothing when there is none.
  std::optional<Effect::OverlayId> overlayOf(std::u16string_view value) const;

  // Selects an overlay of the tab's list.
  void select(const Effect::OverlayId& overlay);

  // The overlay of a first assignment; nothing when the tab's list has none.
  std::optional<Effect::OverlayId> defaultOverlay() const;

  // Enables the buttons that add, while an overlay is selected.
  void refreshButtons() const;

 private:
  void onSourceChange(EventArg<ListBox> event);
  SmartPtr<ComboBox> overlaysOfTab() const;

  const MultiOverlayContext& context;
  SmartPtr<ListBox> list;
  std::vector<Effect::OverlayId> overlays;  // of the list's items; the texts of these are translated
};

}  // namespace Kiln::XUL
