// Goes on when the host throws, as if nothing had happened: const Exception&.
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
    } catch (const Exception&) {
      return;
    }
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
