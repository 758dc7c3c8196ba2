// The presets of open preferences: the one that is chosen, and the user's actions on them.
#pragma once

#include "host/presets.h"

#include <optional>
#include <string>
#include <vector>

namespace Refhost {

class Preferences;

class PresetChoice {
 public:
  // What a chosen preset refers to, and is not there any more.
  struct Gone {
    bool watermark = false;
    bool overlay = false;
  };

  // `owner` is open, and outlives the object. The preset with the present values is chosen, if there is one. Tells the
  // face of presets that cannot be read.
  PresetChoice(Preferences& owner, Presets homePresets, const std::function<void(const std::string&)>& tell);

  // By name.
  std::vector<std::u16string> names() const;
  bool has(std::u16string_view name) const;

  // The chosen preset, and whether the values have changed since it was chosen or saved.
  const std::optional<std::u16string>& chosen() const { return chosenName; }
  bool isChanged() const;

  // The user's actions; the last two are on the chosen preset, and throw when there is none. Throw std::runtime_error:
  // one sentence.

  // Saves the present values under a name, replaces the preset of that name, and chooses it.
  void save(const std::u16string& name);

  // Applies the preset's values, as far as the model has them.
  Gone choose(const std::u16string& name);
  void rename(const std::u16string& newName);
  void remove();

 private:
  TracePairs compared(const TracePairs& values) const;
  void choose(const Preset& preset);
  Gone goneOf(const TracePairs& values) const;
  bool isListed(std::u16string_view watermark) const;
  const std::u16string& demandChosen() const;

  Preferences& preferences;
  Presets presets;
  std::optional<std::u16string> chosenName;
  TracePairs valuesWhenChosen;
};

}  // namespace Refhost
