// Ends the program when it is released before it was created.
#include "tests/check/skeleton.h"

#include <cstdlib>

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  ~Plugin() override {
    if (!isCreated) std::abort();
  }
  void create() override { isCreated = true; }

 private:
  bool isCreated = false;
};

}  // namespace

EXPORT_PLUGIN(Plugin)
