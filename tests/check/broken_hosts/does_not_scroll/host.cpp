// Does not move a scroll bar for the user.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void scroll(WStringView, std::int32_t) override {}
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
