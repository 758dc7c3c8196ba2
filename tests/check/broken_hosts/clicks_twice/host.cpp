// Takes a click on a check box for two.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void click(WStringView id) override {
    PackagedHost::click(id);
    if (id.view() == u"chk") PackagedHost::click(id);
  }
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
