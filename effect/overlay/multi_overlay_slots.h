// The eight slots of the dialog for several overlays: filling them, the pages of each, and clearing them.
#pragma once

#include "effect/overlay/multi_overlay_context.h"
#include "effect/overlay/multi_overlay_source.h"
#include "effect/overlay/ovl_thumbnail.h"
#include "formats/multiple_overlay_details.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Kiln::XUL {

class MultiOverlaySlots final : public SignalTarget {
 public:
  MultiOverlaySlots(const MultiOverlayContext& shared, const MultiOverlaySource& overlays)
      : context(shared),
        source(overlays) {}

  void connectRules();
  void connectSlots();

  const OvlThumbnail& at(std::size_t slot) const { return slots[slot]; }
  Effect::SlotContents contents() const;

  void place(std::size_t slot, const Effect::OverlayId& overlay, std::u16string_view pages);
  void clearAll();

  void onAdd(EventArg<Button> event);
  void onAddManual(EventArg<Button> event);
  void onClear(EventArg<Button> event);

 private:
  using Text = std::u16string_view;

  template <std::size_t... slot>
  void connectEach(std::index_sequence<slot...>);

  // Filling a slot.
  void addToFirstFree(std::size_t from, std::size_t to);
  template <std::size_t slot>
  void onDrop(WString value);
  void dropOn(std::size_t slot, Text value);

  // The pages of a slot.
  void onRule(EventArg<Toggle> event);
  template <std::size_t slot>
  void onPages(SmartPtr<TextChangeEventArg> change);
  void takePages(std::size_t slot, TextChangeEventArg& change);
  void showPages(std::size_t slot) const;
  void keepMastersApart();

  // Clearing a slot.
  template <std::size_t slot>
  void onMenu(WString item);
  void clear(std::size_t slot);

  // The text box with the slot's list of pages; empty for a master.
  SmartPtr<TextBox> pagesBox(std::size_t slot) const;

  const MultiOverlayContext& context;
  const MultiOverlaySource& source;
  std::array<OvlThumbnail, Effect::slotCount> slots;
};

}  // namespace Kiln::XUL
