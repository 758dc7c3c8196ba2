#include "host/kept_watermark.h"

#include "formats/names.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace Refhost {

void keepWatermarkText(Preferences& preferences, const TracePairs& former) {
  namespace Prop = Formats::Prop;
  PropertyModel& model = preferences.model();
  const auto before = [&](std::u16string_view name) {
    const auto found =
        std::find_if(former.rbegin(), former.rend(), [&](const auto& pair) { return pair.first == name; });
    if (found != former.rend()) return std::optional(found->second);
    const auto& properties = model.description().properties;
    const auto known = std::ranges::find_if(properties, [&](const auto& property) { return property.name == name; });
    return known == properties.end() ? std::nullopt : std::optional(known->defaultValue);
  };
  for (const auto name : {Prop::watermark, Prop::watermarkSel})
    if (!before(name) || model.value(name) != before(name)) return;
  TracePairs changed;
  for (const auto name : {Prop::watermarkText, Prop::watermarkTextFont})
    if (const auto value = before(name); value && model.value(name) && model.value(name) != value)
      changed.emplace_back(name, *value);
  if (!changed.empty()) model.submit(changed);
}

}  // namespace Refhost
