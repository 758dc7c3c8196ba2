#include "app/overlay_dialog.h"

#include "app/messages.h"
#include "app/shown_items.h"
#include "formats/names.h"
#include "formats/page_rules.h"
#include "formats/sentences.h"
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

class Assignment {
 public:
  Assignment(Refhost::Dialog& opened, const OverlaySlots& wanted) : dialog(opened), slots(wanted) {}

  void make() {
    for (std::size_t slot = 0; slot < Formats::slotCount; ++slot)
      image(slot).choose(std::u16string(Formats::clearItem));
    for (std::size_t slot = 0; slot < Formats::slotCount; ++slot)
      if (!slots[slot].overlay.empty()) fill(slot);
    if (!dialog.accept())
      throw std::runtime_error(Formats::sentence("The overlays cannot be assigned to their pages."));
  }

 private:
  template <class Kind>
  Kind& widget(Formats::Name id) {
    return demandWidget<Kind>(dialog.layout(), id);
  }

  Refhost::ImageBox& image(std::size_t slot) { return widget<Refhost::ImageBox>(Formats::WidgetId::slotImages[slot]); }

  void fill(std::size_t slot) {
    auto& list = widget<Refhost::SelectorNode>(Formats::WidgetId::overlaySource);
    const auto sources = shownItems(list);
    const auto source = std::ranges::find(sources, slots[slot].overlay, &ShownItem::name);
    if (source == sources.end())
      throw std::runtime_error(
          Formats::sentence("The overlay {1} cannot be combined with others.", inQuotes(slots[slot].overlay)));
    list.choose(source->index);  // overlays of several folders may have the same value
    image(slot).drop(source->value);
    if (slot < Formats::masterSlots)
      chooseRule(slot);
    else
      writePages(slot);
  }

  void chooseRule(std::size_t slot) {
    const auto& rules = Formats::masterRules;
    const auto rule = std::ranges::find_if(rules, [&](const Formats::MasterRule& each) {
      return each.slot == slot && Formats::isName(slots[slot].pages, each.rule);
    });
    if (rule == std::end(rules)) throw std::logic_error("no master has the pages " + slots[slot].pages);
    widget<Refhost::RadioButton>(rule->button).choose();
  }

  void writePages(std::size_t slot) {
    const std::string& pages = slots[slot].pages;
    auto& box = widget<Refhost::TextBoxNode>(Formats::WidgetId::slotPages[slot - Formats::masterSlots]);
    if (!namesPages(pages) || !box.edit(toUtf16(pages), Refhost::Edit::typed))
      throw std::runtime_error(Formats::sentence(
          "{1} does not say on which pages the overlay {2} goes: write All, Even, Odd, or numbers such as 1,3,5-9.",
          inQuotes(pages), inQuotes(slots[slot].overlay)));
  }

  Refhost::Dialog& dialog;
  const OverlaySlots& slots;
};

}  // namespace

void assignOverlays(Refhost::Dialog& dialog, const OverlaySlots& slots) { Assignment(dialog, slots).make(); }

}  // namespace App
