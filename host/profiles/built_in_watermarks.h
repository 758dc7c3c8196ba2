// The built-in watermarks, which a user may have deleted.
#pragma once

#include "host/preferences.h"

#include <string>
#include <vector>

namespace Refhost {

struct BuiltInWatermark {
  std::u16string id;

  // As the user reads it.
  std::u16string name;
};

// Those that the user's file does not have any more. None where the host settings hide them all, and while there is no
// such file: then the plug-in makes one with all of them. Throw std::runtime_error, one sentence, when a file cannot be
// read.
std::vector<BuiltInWatermark> missingBuiltIns(Preferences& preferences);

// Adds those with these ids to the user's watermarks again, as one user action. One whose name another watermark has
// gets a number appended. Failures are reported to the face.
void restoreBuiltIns(Preferences& preferences, const std::vector<std::u16string>& ids);

}  // namespace Refhost
