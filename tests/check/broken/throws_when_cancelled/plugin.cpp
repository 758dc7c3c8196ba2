// Does not expect its dialog to be cancelled.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void more() override {
    isAccepted = false;
    Sound::more();
    if (!isAccepted) throw Exception(host().allocator(), "It was cancelled.");
  }
  void accepted() override { isAccepted = true; }

 private:
  bool isAccepted = false;
};

}  // namespace

EXPORT_PLUGIN(Plugin)
