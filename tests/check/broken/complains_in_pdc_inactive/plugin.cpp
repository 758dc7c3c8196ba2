// Tells the user of a failure in the mode PDC when it is inactive.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void initialise() override {
    if (!isActive() && setting(u"UIMode") == u"PDC") host().tell(u"Something failed.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
