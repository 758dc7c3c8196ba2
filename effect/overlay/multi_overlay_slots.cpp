#include "effect/overlay/multi_overlay_slots.h"

#include <algorithm>
#include <iterator>

namespace Kiln::XUL {

using namespace Effect;

void MultiOverlaySlots::connectRules() {
  for (const MasterRule& rule : masterRules)
    if (const auto button = context.widget<RadioButton>(rule.button))
      connect(*button->changeSignal(), *this, &MultiOverlaySlots::onRule);
}

void MultiOverlaySlots::connectSlots() { connectEach(std::make_index_sequence<slotCount>()); }

template <std::size_t... slot>
void MultiOverlaySlots::connectEach(std::index_sequence<slot...>) {
  const auto connectSlot = [this](std::size_t index, auto onDropped, auto onChosen, auto onChanged) {
    if (const auto image = context.widget<ImageBox>(WidgetId::slotImages[index])) {
      slots[index].bind(image);
      connect(*image->dropSignal(), *this, onDropped);
      connect(*image->menuSignal(), *this, onChosen);
    }
    if (const auto box = pagesBox(index)) {
      connect(*box->typingSignal(), *this, onChanged);
      connect(*box->pastingSignal(), *this, onChanged);
    }
  };
  (connectSlot(slot, &MultiOverlaySlots::onDrop<slot>, &MultiOverlaySlots::onMenu<slot>,
               &MultiOverlaySlots::onPages<slot>),
   ...);
}

SlotContents MultiOverlaySlots::contents() const {
  SlotContents contents;
  std::transform(slots.begin(), slots.end(), contents.begin(), [](const OvlThumbnail& slot) {
    return slot.isOccupied() ? SlotContent{slot.label(), slot.pages()} : SlotContent();
  });
  return contents;
}

void MultiOverlaySlots::onAdd(EventArg<Button>) { addToFirstFree(0, masterSlots); }

void MultiOverlaySlots::onAddManual(EventArg<Button>) { addToFirstFree(masterSlots, slotCount); }

// Puts the selected overlay into the first free slot of the range, if there is one.
void MultiOverlaySlots::addToFirstFree(std::size_t from, std::size_t to) {
  const auto overlay = source.selected();
  if (!overlay) return;
  while (from < to && slots[from].isOccupied()) ++from;
  if (from < to) place(from, *overlay, firstRule(from));
}

template <std::size_t slot>
void MultiOverlaySlots::onDrop(WString value) {
  dropOn(slot, value.view());
}

// A replacing overlay keeps the slot's pages; a master's rule may be chosen before its overlay.
void MultiOverlaySlots::dropOn(std::size_t slot, Text value) {
  const auto overlay = source.overlayOf(value);
  if (!overlay) return;
  const bool keepsPages = slots[slot].isOccupied() || (slot < masterSlots && !slots[slot].pages().empty());
  const std::u16string pages(keepsPages ? Text(slots[slot].pages()) : firstRule(slot));
  place(slot, *overlay, pages);
}

void MultiOverlaySlots::place(std::size_t slot, const OverlayId& overlay, Text pages) {
  slots[slot].setPages(pages);
  slots[slot].setLabel(overlay, context.thumbnail(overlay));
  showPages(slot);
  if (slot < masterSlots) keepMastersApart();
}

void MultiOverlaySlots::onRule(EventArg<Toggle> event) {
  const WString id = event.source().id();
  const auto* chosen = std::find_if(std::begin(masterRules), std::end(masterRules),
                                    [&](const MasterRule& rule) { return rule.button == id.view(); });
  if (chosen == std::end(masterRules)) return;
  slots[chosen->slot].setPages(chosen->rule);
  keepMastersApart();
}

template <std::size_t slot>
void MultiOverlaySlots::onPages(SmartPtr<TextChangeEventArg> change) {
  takePages(slot, *change);
}

// Accepts provisional input too: input methods are not needed for page lists.
void MultiOverlaySlots::takePages(std::size_t slot, TextChangeEventArg& change) {
  const WString text = change.text();
  if (isPageList(text.view()))
    slots[slot].setPages(text.view());
  else
    change.refuse();
}

void MultiOverlaySlots::showPages(std::size_t slot) const {
  for (const MasterRule& rule : masterRules)
    if (const auto button = context.widget<RadioButton>(rule.button); button && rule.slot == slot)
      button->setChecked(rule.rule == slots[slot].pages());
  if (const auto box = pagesBox(slot)) box->setText(slots[slot].pages());
}

SmartPtr<TextBox> MultiOverlaySlots::pagesBox(std::size_t slot) const {
  return slot < masterSlots ? SmartPtr<TextBox>() : context.widget<TextBox>(WidgetId::slotPages[slot - masterSlots]);
}

void MultiOverlaySlots::keepMastersApart() {
  const bool areBothOccupied = slots[0].isOccupied() && slots[1].isOccupied();
  const Text rule = ruleBeside(slots[0].pages(), slots[1].pages(), areBothOccupied);
  if (rule == slots[1].pages()) return;
  slots[1].setPages(rule);
  showPages(1);
}

void MultiOverlaySlots::onClear(EventArg<Button>) {
  const auto choice = context.widget<ComboBox>(WidgetId::overlayClearChoice);
  const auto item = choice ? choice->selectedItem() : SmartPtr<ListItem>();
  if (!item) return;
  const WString value = item->value();
  const auto* chosen = std::find(std::begin(clearChoices), std::end(clearChoices), value.view());
  if (chosen != std::end(clearChoices)) clear(static_cast<std::size_t>(chosen - std::begin(clearChoices)));
}

template <std::size_t slot>
void MultiOverlaySlots::onMenu(WString item) {
  if (item.view() == clearItem) clear(slot);
}

void MultiOverlaySlots::clear(std::size_t slot) {
  slots[slot].clear();
  showPages(slot);
}

void MultiOverlaySlots::clearAll() {
  for (std::size_t slot = 0; slot < slotCount; ++slot) clear(slot);
}

}  // namespace Kiln::XUL
