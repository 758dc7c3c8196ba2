// Closes the preferences though the plug-in has refused.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  bool accept() override {
    PackagedHost::accept();
    return true;
  }
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
