// Never releases the GUI, in one mode.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    if (setting(u"UIMode") == u"PDC") gui->addRef();
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
