// Calls initialise twice.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  void initialise() override {
    inner->initialise();
    inner->initialise();
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withPlugin<Broken>)
