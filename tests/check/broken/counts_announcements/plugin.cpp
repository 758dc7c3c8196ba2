// Shows how often it was told the initial state.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void switchChanged(ModelSelectionChange& change) override {
    Sound::switchChanged(change);
    shown += u'.';
    if (const auto label = smartCast<Label>(gui->widgetById(u"lbl_size"))) label->setLabel(shown);
  }

 private:
  std::u16string shown;
};

}  // namespace

EXPORT_PLUGIN(Plugin)
