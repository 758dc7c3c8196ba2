#include "app/overlay_dialog.h"

#include "app/shown_items.h"
#include "formats/names.h"
#include "formats/page_rules.h"
#include "formats/text.h"

#include <algorithm>

namespace App {
namespace {

using Formats::toUtf16;

// Whether every item of a list names pages. What it has besides digits and hyphens, the dialog rejects.
bool namesPages(std::string_view list) {
  bool hasItems = false;
  for (std::size_t start = 0; start < list.size();) {
    const std::string_view item = list.substr(start, list.find(',', start) - start);
    if (!item.empty() && !Formats::isPageItem(item)) return false;
    hasItems = hasItems || !item.empty();
    start += item.size() + 1;
  }
  return hasItems;
}

// Slot indexes start at 0 here, and at 1 in widget ids.
class Assignment {
 public:
  Assignment(Refhost::Dialog& opened, const OverlaySlots& wanted) : dialog(opened), slots(wanted) {}

  void make() {
    for (std::size_t slot = 0; slot < overlaySlots; ++slot) image(slot).choose(std::u16string(Formats::clearItem));
    for (std::size_t slot = 0; slot < overlaySlots; ++slot)
      if (!slots[slot].overlay.empty()) fill(slot);
    if (!dialog.accept()) throw std::runtime_error("The overlays cannot be assigned to their pages.");
  }

 private:
  template <class Kind>
  Kind& widget(Formats::Name id) {
    return demandWidget<Kind>(dialog.layout(), id);
  }

  static std::u16string number(std::size_t slot) { return toUtf16(std::to_string(slot + 1)); }

  Refhost::ImageBox& image(std::size_t slot) { return widget<Refhost::ImageBox>(Formats::WidgetId::slotImages[slot]); }

  void fill(std::size_t slot) {
    auto& list = widget<Refhost::SelectorNode>(Formats::WidgetId::overlaySource);
    const auto sources = shownItems(list);
    const auto source = std::ranges::find(sources, slots[slot].overlay, &ShownItem::name);
    if (source == sources.end())
      throw std::runtime_error("The overlay " + inQuotes(slots[slot].overlay) + " cannot be combined with others.");
    list.choose(source->index);  // overlays of several folders may have the same value
    image(slot).drop(source->value);
    if (slot < firstListSlot)
      widget<Refhost::RadioButton>(u"rad" + number(slot) + u"_" + toUtf16(slots[slot].pages)).choose();
    else
      writePages(slot);
  }

  void writePages(std::size_t slot) {
    const std::string& pages = slots[slot].pages;
    auto& box = widget<Refhost::TextBoxNode>(Formats::WidgetId::slotPages[slot - firstListSlot]);
    if (!namesPages(pages) || !box.edit(toUtf16(pages), Refhost::Edit::typed))
      throw std::runtime_error(inQuotes(pages) + " does not say on which pages the overlay " +
                               inQuotes(slots[slot].overlay) +
                               " goes: write All, Even, Odd, or numbers such as 1,3,5-9.");
  }

  Refhost::Dialog& dialog;
  const OverlaySlots& slots;
};

}  // namespace

void assignOverlays(Refhost::Dialog& dialog, const OverlaySlots& slots) { Assignment(dialog, slots).make(); }

}  // namespace App
