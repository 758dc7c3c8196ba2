// Stops exceptions of other handlers.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void clicked() override {
    try {
      Sound::clicked();
    } catch (...) {
      return;
    }
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
