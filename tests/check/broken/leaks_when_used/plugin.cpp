// Keeps a block of memory whenever it opens its dialog.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void more() override { host().allocator().allocate(8); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
