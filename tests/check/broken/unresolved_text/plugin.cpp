// Shows a text that no string table has.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    if (const auto label = smartCast<Label>(gui->widgetById(u"lbl_size"))) label->setLabel(u"$IDS_NOWHERE;");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
