// Asks for a widget before the ready signal.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void configureUI(SmartPtr<GUI> given) override {
    given->widgetById(u"chk_switch");
    Sound::configureUI(given);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
