// Takes OK for Cancel.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void acceptDialog() override { PackagedHost::cancelDialog(); }
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
