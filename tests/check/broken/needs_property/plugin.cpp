// Does not expect a property to be missing.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override { properties()->child(u"Title")->boolValue(); }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
