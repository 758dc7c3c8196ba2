// Calls rootlessActivation once, whatever it returns.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  bool rootlessActivation() override {
    inner->rootlessActivation();
    return false;
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withPlugin<Broken>)
