// Is whatever it is asked for.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == "PTPlugin" ? Sound::queryInterface(asked) : this;
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
