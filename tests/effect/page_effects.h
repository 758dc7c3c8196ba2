// The check boxes of the page effects, and preferences to try them in.
#pragma once

#include "tests/support/world.h"

#include <string>
#include <utility>
#include <vector>

namespace Testing {

inline constexpr auto negativeBox = u"ePTKWPageNegativeImage";
inline constexpr auto mirrorBox = u"ePTKWPageMirrorImage";
inline constexpr auto rotateBox = u"chk_EffRot180Deg";
inline constexpr auto rotateA3LDBox = u"chk_EffRot180DegForA3LD";

using Lines = std::vector<std::string>;

inline Refhost::Options onModel(const std::string& model) {
  auto options = builtOptions();
  options.model = model;
  return options;
}

inline Refhost::Options with(std::u16string property, std::u16string value) {
  auto options = builtOptions();
  options.properties = {{std::move(property), std::move(value)}};
  return options;
}

}  // namespace Testing
