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
  const auto offered = box->data();
  const auto items = context.services.listData();
  overlays.clear();
  for (std::int32_t i = headItems; i < offered->count(); ++i) {
    const auto overlay = offered->at(i);
    const auto picture = context.thumbnail(idOf(*overlay));
    if (!picture) continue;
    const auto item = items->append(overlay->displayedText(), overlay->value());
    item->setImage(picture);
    item->setColour(sourceColour);
    item->setMarked(overlay->isMarked());
    overlays.push_back(idOf(*overlay));
  }
  list->setData(items);
}

std::optional<OverlayId> MultiOverlaySource::selected() const {
  const std::int32_t index = list ? list->selectedIndex() : -1;
  if (index < 0 || index >= static_cast<std::int32_t>(overlays.size())) return {};
  return overlays[static_cast<std::size_t>(index)];
}

// Several overlays may have the same value; prefers the selected one, which is usually the one dragged.
std::optional<OverlayId> MultiOverlaySource::overlayOf(std::u16string_view value) const {
  if (const auto overlay = selected(); overlay && overlay->fileName == value) return overlay;
  const auto found = std::ranges::find(overlays, value, &OverlayId::fileName);
  if (found == overlays.end()) return {};
  return *found;
}

void MultiOverlaySource::select(const OverlayId& overlay) {
  const auto found = std::ranges::find(overlays, overlay);
  if (list && found != overlays.end()) list->select(static_cast<std::int32_t>(found - overlays.begin()));
}

// The one that is `headItems` before the end of the tab's list, or the only one.
std::optional<OverlayId> MultiOverlaySource::defaultOverlay() const {
  const auto box = overlaysOfTab();
  if (!box) return {};
  const auto offered = box->data();
  const auto item = offered->at(std::max(offered->count() - headItems, headItems));
  if (!item) return {};
  return idOf(*item);
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
