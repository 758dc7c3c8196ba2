// Asks the host when it is destroyed.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  ~Plugin() override { host().isJapanese(); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
