// Goes on when the host throws, as if nothing had happened: const std::bad_alloc&.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    try {
      host().isJapanese();
    } catch (const std::bad_alloc&) {
      return;
    }
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
