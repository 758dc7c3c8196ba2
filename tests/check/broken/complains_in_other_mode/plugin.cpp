// Tells the user that it does not know the mode.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void initialise() override {
    if (setting(u"UIMode") == u"Unknown") host().tell(u"Something failed.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
