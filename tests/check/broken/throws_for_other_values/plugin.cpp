// Expects no values but those of the model.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void switchChanged(ModelSelectionChange& change) override {
    if (change.value.view() != u"On" && change.value.view() != u"Off")
      throw Exception(host().allocator(), "There is no such value.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
