// Does not expect to be asked for help.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void helpAsked() override { throw Exception(host().allocator(), "There is no help."); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
