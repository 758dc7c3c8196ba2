// Does not expect a widget of another kind.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    if (gui->widgetById(u"chk_switch") && !switchBox()) throw Exception(host().allocator(), "It is no check box.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
