// Opens though the plug-in has thrown.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  void create() override {
    try {
      inner->create();
    } catch (const std::exception&) {
      return;
    }
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withPlugin<Broken>)
