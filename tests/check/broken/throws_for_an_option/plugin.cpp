// Does not expect one of the options.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void switchChanged(ModelSelectionChange& change) override {
    if (change.value.view() == u"On") throw Exception(host().allocator(), "It is on.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
