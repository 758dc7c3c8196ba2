// Keeps a block of memory, in one mode.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    if (setting(u"UIMode") == u"PDC") host().allocator().allocate(8);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
