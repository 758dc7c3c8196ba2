// Does not expect its dialog to be accepted.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void accepted() override { throw Exception(host().allocator(), "It was accepted."); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
