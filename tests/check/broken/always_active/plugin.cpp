// Decides for itself whether it is enabled.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  bool isActive() override { return true; }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
