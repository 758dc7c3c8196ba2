#include "press/effects.h"

namespace Press {

Effects effectsFromProperties(const std::map<std::string, std::string>& properties) {
  const auto holds = [&](const char* name, const char* on) {
    const auto found = properties.find(name);
    return found != properties.end() && found->second == on;
  };
  Effects effects;
  effects.mirrorImage = holds("MirrorImage", "MirrorImage");
  effects.negativeImage = holds("NegativeImage", "Negative");
  effects.rotate180 = holds("Rotate180", "Rotate180");
  // The same word as for Rotate180: the ticket has no word of its own for this one.
  effects.rotate180ForA3Ledger = holds("Rotate180ForA3LD", "Rotate180");
  return effects;
}

}  // namespace Press
