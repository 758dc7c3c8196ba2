// Allows every value.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  bool valueAllowed(WStringView, WStringView) override { return true; }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
