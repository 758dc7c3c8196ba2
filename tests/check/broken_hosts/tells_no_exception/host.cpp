// Does not tell the user when a click has failed.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void click(WStringView id) override {
    PackagedHost::click(id);
    PackagedHost::told();
  }
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
