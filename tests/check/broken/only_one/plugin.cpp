// Works once at a time.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

int living = 0;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  ~Plugin() override { living -= isCounted ? 1 : 0; }
  void create() override {
    isCounted = true;
    if (++living > 1) throw Exception(host().allocator(), "There is another one.");
  }

 private:
  bool isCounted = false;
};

}  // namespace

EXPORT_PLUGIN(Plugin)
