// Does not expect a profile.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void imported() override { throw Exception(host().allocator(), "There is no profile."); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
