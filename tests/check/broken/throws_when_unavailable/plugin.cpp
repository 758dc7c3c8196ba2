// Does not expect an option to become unavailable.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void sizeAllowed(ModelEnableChange& change) override {
    if (!change.enabled) throw Exception(host().allocator(), "It is not available.");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
