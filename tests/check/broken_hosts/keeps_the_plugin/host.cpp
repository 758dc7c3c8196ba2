// Does not release the plug-in.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  ~Broken() override { inner->addRef(); }
};

}  // namespace

EXPORT_HOST(PackagedHost, withPlugin<Broken>)
