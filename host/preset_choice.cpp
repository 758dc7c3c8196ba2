#include "host/preset_choice.h"

#include "formats/file_list.h"
#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/preferences.h"
#include "host/widgets/list.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

namespace Prop = Formats::Prop;

void leaveOut(const std::string&) {}

std::u16string valueIn(const TracePairs& values, std::u16string_view name) {
  const auto found =
      std::ranges::find(values, name, [](const auto& pair) -> std::u16string_view { return pair.first; });
  return found == values.end() ? std::u16string() : found->second;
}

// Values that follow from others: what a selected watermark looks like, and the name of a selected overlay, in the
// user's language.
bool isDerived(std::u16string_view name) { return name == Prop::overlayName || name.starts_with(Prop::watermarkText); }

std::size_t filesIn(std::u16string_view list) {
  std::size_t count = 0;
  for (; !list.empty(); ++count) Formats::takeFirst(list);
  return count;
}

}  // namespace

PresetChoice::PresetChoice(Preferences& owner, Presets homePresets, const std::function<void(const std::string&)>& tell)
    : preferences(owner),
      presets(std::move(homePresets)) {
  const TracePairs now = compared(preferences.userValues());
  for (const Preset& preset : presets.read(tell)) {
    if (preset.model != preferences.model().description().name || compared(preset.values) != now) continue;
    chosenName = preset.name;
    valuesWhenChosen = now;
    return;
  }
}

std::vector<std::u16string> PresetChoice::names() const {
  std::vector<std::u16string> all;
  for (const Preset& preset : presets.read(leaveOut)) all.push_back(preset.name);
  return all;
}

bool PresetChoice::has(std::u16string_view name) const {
  const auto all = names();
  return std::ranges::find(all, name) != all.end();
}

bool PresetChoice::isChanged() const { return chosenName && compared(preferences.userValues()) != valuesWhenChosen; }

// In the order of their names.
TracePairs PresetChoice::compared(const TracePairs& values) const {
  TracePairs pairs = values;
  std::erase_if(pairs, [](const auto& pair) { return isDerived(pair.first); });
  std::ranges::sort(pairs);
  return pairs;
}

void PresetChoice::save(const std::u16string& name) {
  preferences.actions().act({"preset-save", {name}, OwnText::argument}, [&] {
    presets.save({name, preferences.model().description().name, preferences.userValues()});
    chosenName = name;
    valuesWhenChosen = compared(preferences.userValues());
  });
}

PresetChoice::Gone PresetChoice::choose(const std::u16string& name) {
  const std::vector<Preset> all = presets.read(leaveOut);
  const auto preset = std::ranges::find(all, name, &Preset::name);
  if (preset == all.end())
    throw std::runtime_error(Formats::sentence("There is no preset {1}.", Formats::quoted(Formats::toUtf8(name))));
  Gone gone;
  preferences.actions().act({"preset", {name}, OwnText::argument}, [&] {
    choose(*preset);
    gone = goneOf(preset->values);
    preferences.actions().answer("watermarkGone", gone.watermark);
    preferences.actions().answer("overlayGone", gone.overlay);
  });
  return gone;
}

PresetChoice::Gone PresetChoice::goneOf(const TracePairs& values) const {
  const PropertyModel& model = preferences.model();
  const auto isLost = [&](std::u16string_view property, std::u16string_view none) {
    const std::u16string wanted = valueIn(values, property);
    return !wanted.empty() && wanted != none && model.value(property) != wanted;
  };
  const auto source = model.value(Prop::overlaySourceFileName).value_or(u"");
  return {.watermark = !isListed(valueIn(values, Prop::watermarkSel)),
          .overlay = isLost(Prop::overlaySel, Formats::Value::none) ||
                     filesIn(source) < filesIn(valueIn(values, Prop::overlaySourceFileName))};
}

// Whether the tab lists the watermark, if it lists any.
bool PresetChoice::isListed(std::u16string_view watermark) const {
  const Gui* gui = preferences.gui();
  auto* list = gui == nullptr ? nullptr : dynamic_cast<SelectorNode*>(gui->find(Formats::WidgetId::watermarkList));
  if (list == nullptr || watermark.empty()) return true;
  const std::u16string downloaded = std::u16string(watermark) + std::u16string(Formats::downloadedEnding);
  for (std::int32_t i = 0; i < list->items().count(); ++i)
    if (const std::u16string value = list->items().at(i)->value().str(); value == watermark || value == downloaded)
      return true;
  return false;
}

void PresetChoice::choose(const Preset& preset) {
  preferences.apply(preset.values);
  chosenName = preset.name;
  valuesWhenChosen = compared(preferences.userValues());
}

void PresetChoice::rename(const std::u16string& newName) {
  const std::u16string name = demandChosen();
  preferences.actions().act({"preset-rename", {newName}, OwnText::argument}, [&] {
    presets.rename(name, newName);
    chosenName = newName;
  });
}

void PresetChoice::remove() {
  const std::u16string name = demandChosen();
  preferences.actions().act({"preset-delete"}, [&] {
    presets.remove(name);
    chosenName.reset();
  });
}

const std::u16string& PresetChoice::demandChosen() const {
  if (!chosenName) throw std::runtime_error(Formats::sentence("No preset is chosen."));
  return *chosenName;
}

}  // namespace Refhost
