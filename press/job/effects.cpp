#include "press/job/effects.h"

#include "press/error.h"

#include <algorithm>

namespace Press {

bool Effects::any() const {
  return anyPageEffect() || !watermark.text.empty() || !overlays.empty() || pagesOnSheet != 1;
}

bool Effects::anyPageEffect() const {
  return std::ranges::any_of(pageEffects, [this](const PageEffect& effect) { return this->*effect.isOn; });
}

bool Effects::anyPaint() const {
  return std::ranges::any_of(
      pageEffects, [this](const PageEffect& effect) { return this->*effect.isOn && !effect.paint.blendMode.empty(); });
}

bool Effects::dependOnPlace() const {
  const auto isForSome = [](const Overlay& overlay) { return overlay.pages != PageRule(); };
  return (watermark.firstOnly && !watermark.text.empty()) || std::ranges::any_of(overlays, isForSome);
}

Effects effectsFromProperties(const Properties& properties) {
  namespace Prop = Formats::Prop;
  namespace Value = Formats::Value;
  const auto holds = [&](Formats::Name name, Formats::Name on) { return isSet(properties, name, on); };
  Effects effects;
  for (const PageEffect& effect : pageEffects) effects.*effect.isOn = holds(effect.setting.property, effect.setting.on);
  effects.overlaysOverPage = holds(Prop::overlayLayering, Value::overlay);
  effects.overlaysOnEachPage = holds(Prop::overlayOccurance, Value::perPage);
  if (holds(Prop::nin1, Value::twoInOne)) effects.pagesOnSheet = 2;
  if (holds(Prop::nin1, Value::fourInOne)) effects.pagesOnSheet = 4;
  effects.overlayTroubles = overlayTroubles(properties);
  try {
    effects.watermark = watermarkFromProperties(properties);
    effects.overlays = overlaysFromProperties(properties);
  } catch (const Error& error) {
    effects.refusal = error.what();
  }
  return effects;
}

}  // namespace Press
