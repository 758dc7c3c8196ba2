// Does not expect a widget to be missing.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override { gui->widgetById(u"lbl_size")->hide(); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
