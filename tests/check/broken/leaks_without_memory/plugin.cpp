// Keeps a block of memory when it gets no other one.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    void* block = host().allocator().allocate(8);
    const String text(host().allocator(), "Sound");
    host().allocator().deallocate(block);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
