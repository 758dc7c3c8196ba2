#include "effect/overlay/multi_overlay_source.h"

#include <algorithm>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The tab's list starts with the items for no overlay and for several.
constexpr std::int32_t headItems = 2;

// The colour of every overlay to choose from.
constexpr Name sourceColour = downloadedColour;

}  // namespace

void MultiOverlaySource::connectList() {
  list = context.widget<ListBox>(WidgetId::overlaySource);
  if (list) connect(*list->changeSignal(), *this, &MultiOverlaySource::onSourceChange);
}

void MultiOverlaySource::fill() {
  const auto box = overlaysOfTab();
  if (!list || !box) return;
  const auto overlays = box->data();
  const auto items = context.services.listData();
  for (std::int32_t i = headItems; i < overlays->count(); ++i) {
    const auto overlay = overlays->at(i);
    const auto picture = context.thumbnail(overlay->value().view(), overlay->isMarked());
    if (!picture) continue;
    const auto item = items->append(overlay->displayedText(), overlay->value());
    item->setImage(picture);
    item->setColour(sourceColour);
    item->setMarked(overlay->isMarked());
  }
  list->setData(items);
}

SmartPtr<ListItem> MultiOverlaySource::selectedItem() const {
  return list ? list->selectedItem() : SmartPtr<ListItem>();
}

// A downloaded overlay and the user's own may have the same value; prefers the selected item, which is usually the one
// dragged.
SmartPtr<ListItem> MultiOverlaySource::itemOf(std::u16string_view value) const {
  if (!list) return {};
  if (const auto selected = list->selectedItem(); selected && selected->value().view() == value) return selected;
  const auto items = list->data();
  for (std::int32_t i = 0; i < items->count(); ++i)
    if (const auto item = items->at(i); item->value().view() == value) return item;
  return {};
}

// A downloaded overlay and the user's own may have the same value.
void MultiOverlaySource::select(ListItem& overlay) {
  if (!list) return;
  const auto items = list->data();
  for (std::int32_t i = 0; i < items->count(); ++i) {
    const auto item = items->at(i);
    if (item->value().view() != overlay.value().view() || item->isMarked() != overlay.isMarked()) continue;
    list->select(i);
    return;
  }
}

// The item that is `headItems` before the end of the tab's list, or the only overlay.
SmartPtr<ListItem> MultiOverlaySource::defaultOverlay() const {
  const auto box = overlaysOfTab();
  if (!box) return {};
  const auto overlays = box->data();
  return overlays->at(std::max(overlays->count() - headItems, headItems));
}

void MultiOverlaySource::refreshButtons() const {
  const bool hasOverlay = list && list->selectedItem();
  for (const Name id : {WidgetId::overlayAdd, WidgetId::overlayAddManual})
    if (const auto button = context.widget<Button>(id)) button->setEnabled(hasOverlay);
}

void MultiOverlaySource::onSourceChange(EventArg<ListBox>) { refreshButtons(); }

SmartPtr<ComboBox> MultiOverlaySource::overlaysOfTab() const {
  return smartCast<ComboBox>(context.dialog->parentWidgetById(WidgetId::overlayList));
}

}  // namespace Kiln::XUL
