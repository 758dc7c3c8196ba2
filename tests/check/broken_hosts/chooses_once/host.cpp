// Takes no choice of the item that is selected.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void choose(WStringView id, std::int32_t item) override {
    if (std::exchange(last, item) != item) PackagedHost::choose(id, item);
  }

 private:
  std::int32_t last = -1;
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
