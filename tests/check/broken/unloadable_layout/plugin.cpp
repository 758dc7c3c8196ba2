// Has a dialog that does not load.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  const char16_t* layout() override { return u"chrome://unloadable/content/tab.xul"; }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
