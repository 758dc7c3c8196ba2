// The manifest of a profile: its model and property values, in the file profile.xml.
#pragma once

#include "host/trace.h"

#include <string>
#include <string_view>

namespace Refhost {

inline constexpr std::string_view manifestName = "profile.xml";

struct Manifest {
  // The model that the values belong to.
  std::u16string model;

  // By property name, in the model's order.
  TracePairs values;
};

std::string manifestBytes(const Manifest& manifest);

// Throws std::runtime_error, the end of a sentence, for an invalid manifest or a newer version.
Manifest readManifest(std::string_view bytes);

}  // namespace Refhost
