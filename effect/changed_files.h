// Changes to files that other programs change too.
#pragma once

#include "kiln/exception.h"

namespace Effect {

// Repeats the work, which reads files and then replaces them, while other programs change them in between. The host
// lets no other program change them after the first time; the limit is for hosts that do.
template <class Work>
void untilFilesStay(const Work& work) {
  constexpr int most = 10;
  for (int attempt = 1; attempt < most; ++attempt) {
    try {
      return work();
    } catch (const Kiln::FileChanged&) {
      // The work reads what is there now.
    }
  }
  work();
}

}  // namespace Effect
