// Does not ask the plug-in when a profile is saved.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void exportProfile() override {}
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
