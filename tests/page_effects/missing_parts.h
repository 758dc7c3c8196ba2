#pragma once

#include "formats/names.h"
#include "press/job/effects.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

// Where the parts of an effect are.
struct EffectSources {
  std::filesystem::path resources;  // the packages' contents, and the models
  std::filesystem::path documents;  // docs/
  std::span<const Press::PageEffect> printed = Press::pageEffects;
};

// A sentence about each part that the effect does not have, with the file that it is missing in.
std::vector<std::string> missingParts(const Formats::PageEffect& effect, const EffectSources& sources);
