#include "app/overlay_dialog.h"

#include "app/shown_items.h"
#include "host/unicode.h"

#include <algorithm>

namespace App {
namespace {

using Refhost::toWide;

// Slot indexes start at 0 here, and at 1 in widget ids.
class Assignment {
 public:
  Assignment(Refhost::Dialog& opened, const OverlaySlots& wanted) : dialog(opened), slots(wanted) {}

  void make() {
    for (std::size_t slot = 0; slot < overlaySlots; ++slot) image(slot).choose(u"clear");
    for (std::size_t slot = 0; slot < overlaySlots; ++slot)
      if (!slots[slot].overlay.empty()) fill(slot);
    if (!dialog.accept()) throw std::runtime_error("The overlays cannot be assigned to their pages.");
  }

 private:
  template <class Kind>
  Kind& widget(const std::u16string& id) {
    return demandWidget<Kind>(dialog.layout(), id);
  }

  static std::u16string number(std::size_t slot) { return toWide(std::to_string(slot + 1)); }

  Refhost::ImageBox& image(std::size_t slot) {
    return widget<Refhost::ImageBox>(u"img_MulOvl" + number(slot) + u"Image");
  }

  void fill(std::size_t slot) {
    const auto sources = shownItems(widget<Refhost::SelectorNode>(u"lib_MulOvlSource"));
    const auto source = std::ranges::find(sources, slots[slot].overlay, &ShownItem::name);
    if (source == sources.end())
      throw std::runtime_error("The overlay " + inQuotes(slots[slot].overlay) + " cannot be combined with others.");
    image(slot).drop(source->value);
    if (slot < firstListSlot)
      widget<Refhost::RadioButton>(u"rad" + number(slot) + u"_" + toWide(slots[slot].pages)).choose();
    else
      writePages(slot);
  }

  void writePages(std::size_t slot) {
    const std::string& pages = slots[slot].pages;
    auto& box = widget<Refhost::TextBoxNode>(u"edt_MulOvl" + number(slot) + u"Manual");
    if (pages.empty() || !box.edit(toWide(pages), Refhost::Edit::typed))
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
