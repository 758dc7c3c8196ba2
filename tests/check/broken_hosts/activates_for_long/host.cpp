// Calls rootlessActivation as often as it is asked to.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  bool rootlessActivation() override {
    for (int calls = 0; calls < 200; ++calls)
      if (!inner->rootlessActivation()) break;
    return false;
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withPlugin<Broken>)
