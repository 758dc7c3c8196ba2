#include "press/job/effects.h"

#include "press/error.h"

#include <algorithm>

namespace Press {

bool Effects::any() const {
  return mirrorImage || negativeImage || rotate180 || rotate180ForA3Ledger || !watermark.text.empty() ||
         !overlays.empty() || pagesOnSheet != 1;
}

bool Effects::dependOnPlace() const {
  const auto isForSome = [](const Overlay& overlay) { return overlay.pages != PageRule(); };
  return (watermark.firstOnly && !watermark.text.empty()) || std::ranges::any_of(overlays, isForSome);
}

Effects effectsFromProperties(const Properties& properties) {
  const auto holds = [&](const char* name, const char* on) { return valueOf(properties, name) == on; };
  Effects effects;
  effects.mirrorImage = holds("MirrorImage", "MirrorImage");
  effects.negativeImage = holds("NegativeImage", "Negative");
  effects.rotate180 = holds("Rotate180", "Rotate180");
  // The "on" value is the same as for Rotate180.
  effects.rotate180ForA3Ledger = holds("Rotate180ForA3LD", "Rotate180");
  effects.overlaysOverPage = holds("OverlayLayering", "Overlay");
  effects.overlaysOnEachPage = holds("OverlayOccurance", "PerPage");
  if (holds("Nin1", "2in1")) effects.pagesOnSheet = 2;
  if (holds("Nin1", "4in1")) effects.pagesOnSheet = 4;
  try {
    effects.watermark = watermarkFromProperties(properties);
    effects.overlays = overlaysFromProperties(properties);
  } catch (const Error& error) {
    effects.refusal = error.what();
  }
  return effects;
}

}  // namespace Press
