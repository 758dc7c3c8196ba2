// Tells the user of a failure without a GUI when it is inactive.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  bool rootlessActivation() override {
    if (!isActive()) host().tell(u"Something failed.");
    return Sound::rootlessActivation();
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
