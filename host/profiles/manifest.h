// What a profile says of itself, and the property values in it: its file profile.xml.
#pragma once

#include "host/trace.h"

#include <string>
#include <string_view>

namespace Refhost {

inline constexpr std::string_view manifestName = "profile.xml";

struct Manifest {
  // The name of the model that the values are of.
  std::u16string model;

  // By property name, in the model's order.
  TracePairs values;
};

std::string manifestBytes(const Manifest& manifest);

// Throws std::runtime_error, the end of a sentence, for what is no manifest, or one of a newer version.
Manifest readManifest(std::string_view bytes);

}  // namespace Refhost
