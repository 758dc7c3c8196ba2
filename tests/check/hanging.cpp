// A plug-in that never returns when it is started without a GUI.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  bool rootlessActivation() override {
    for (volatile bool goesOn = true; goesOn;) continue;
    return false;
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
