#include "app/marks.h"

#include "app/messages.h"
#include "app/overlay_dialog.h"
#include "app/overlay_slots.h"
#include "app/shown_items.h"
#include "formats/names.h"
#include "formats/near_names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/gui.h"

#include <algorithm>

namespace App {
namespace {

namespace Prop = Formats::Prop;
namespace WidgetId = Formats::WidgetId;
namespace Value = Formats::Value;

template <class Kind>
Kind& onTab(SilentRun& run, Formats::Name id) {
  return demandWidget<Kind>(*run.preferences().gui(), id);
}

// Chooses an item in a list; `refusal` is the template of the sentence that it cannot be chosen.
void choose(SilentRun& run, Refhost::SelectorNode& list, const ShownItem& item, std::string_view refusal) {
  run.act([&] { list.choose(item.index); });
  if (list.selection() != item.index) throw std::runtime_error(Formats::sentence(refusal, inQuotes(item.name)));
}

bool isOverlay(const ShownItem& item) { return item.value != Value::none && item.value != Value::multiple; }

// The overlay with that name, or the entry for none; null when there is neither.
const ShownItem* overlayNamed(const std::vector<ShownItem>& items, const std::string& name) {
  const ShownItem* none = nullptr;
  for (const ShownItem& item : items) {
    if (item.name != name) continue;
    if (isOverlay(item)) return &item;
    if (item.value == Value::none) none = &item;
  }
  return none;
}

// Splits NAME:PAGES.
PlacedOverlay toPlaced(const std::vector<ShownItem>& items, const std::string& word) {
  std::vector<std::string> names;
  for (const ShownItem& item : items)
    if (isOverlay(item)) names.push_back(item.name);
  if (const std::string name = nameMeant(names, word); overlayNamed(items, name) != nullptr) return {name, "All"};
  const std::size_t colon = word.rfind(':');
  if (colon != word.npos)
    if (const std::string name = nameMeant(names, word.substr(0, colon)); overlayNamed(items, name) != nullptr)
      return {name, word.substr(colon + 1)};
  if (names.empty())
    throw std::runtime_error(Formats::sentence("There is no overlay {1}; there are none yet.", inQuotes(word)));
  throw std::runtime_error(Formats::sentence("There is no overlay {1}; there are {2}.", inQuotes(word), listed(names)) +
                           Formats::didYouMean(names, word.substr(0, colon)));
}

// Opens the dialog as a user does: by choosing several overlays, or if already chosen, by the details button.
void chooseSeveral(SilentRun& run, const OverlaySlots& slots) {
  auto& list = onTab<Refhost::SelectorNode>(run, WidgetId::overlayList);
  const auto items = shownItems(list);
  const auto several = std::ranges::find(items, Value::multiple, &ShownItem::value);
  if (several == items.end()) throw std::runtime_error(Formats::sentence("These preferences take one overlay only."));
  const auto openDialog = [&] {
    if (list.selection() == several->index)
      onTab<Refhost::Button>(run, WidgetId::overlayDetails).click();
    else
      list.choose(several->index);
  };
  bool isAssigned = false;
  run.act(openDialog, [&](Refhost::Dialog& dialog) {
    assignOverlays(dialog, slots);
    isAssigned = true;
  });
  if (!isAssigned) throw std::runtime_error(Formats::sentence("Several overlays cannot be chosen now."));
}

// Whether the setting has an effect only with a watermark.
bool needsWatermark(const std::pair<std::u16string, std::u16string>& setting) {
  const auto& [name, value] = setting;
  if (name == Prop::watermarkSel) return value != Formats::noneId;
  return name.starts_with(Prop::watermark) && name != Prop::watermarkColor;
}

}  // namespace

void chooseWatermark(SilentRun& run, const std::string& name) {
  auto& list = onTab<Refhost::SelectorNode>(run, WidgetId::watermarkList);
  const auto items = shownItems(list);
  std::vector<std::string> names;
  for (const ShownItem& each : items) names.push_back(each.name);
  const auto item = std::ranges::find(items, nameMeant(names, name), &ShownItem::name);
  if (item != items.end())
    return choose(run, list, *item, Formats::sentenceTemplate("The watermark {1} cannot be chosen now."));
  throw std::runtime_error(
      Formats::sentence("There is no watermark {1}; there are {2}.", inQuotes(name), listed(names)) +
      Formats::didYouMean(names, name));
}

void chooseOverlays(SilentRun& run, const std::vector<std::string>& words) {
  if (words.empty()) return;
  auto& list = onTab<Refhost::SelectorNode>(run, WidgetId::overlayList);
  const auto items = shownItems(list);
  std::vector<PlacedOverlay> overlays;
  for (const std::string& word : words) overlays.push_back(toPlaced(items, word));
  if (overlays.size() == 1 && overlays.front().pages == "All")
    choose(run, list, *overlayNamed(items, overlays.front().overlay),
           Formats::sentenceTemplate("The overlay {1} cannot be chosen now."));
  else
    chooseSeveral(run, slotsFor(overlays));
}

void warnOfMissingWatermark(SilentRun& run, const Refhost::TracePairs& settings) {
  const auto needing = std::ranges::find_if(settings, needsWatermark);
  const bool isDecided =
      std::ranges::any_of(settings, [](const auto& setting) { return setting.first == Prop::watermark; });
  if (needing == settings.end() || isDecided) return;
  if (Formats::isName(run.printedValues()[Formats::toUtf8(Prop::watermark)], Value::watermark)) return;
  run.face().tell(Formats::sentence("The watermark is off, so {1} has no effect: choose a watermark with --watermark "
                                    "NAME, or turn it on with --set Watermark=Watermark.",
                                    inQuotes(Formats::toUtf8(needing->first))));
}

}  // namespace App
