// Takes what is pasted for typed.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PackagedHost {
 public:
  using PackagedHost::PackagedHost;
  void paste(WStringView id, WStringView text) override { PackagedHost::type(id, text); }
};

}  // namespace

EXPORT_HOST(Broken, makePlugin)
