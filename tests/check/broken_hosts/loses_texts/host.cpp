// Has no text for an unknown reference.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  WString translate(WStringView text) override {
    WString found = HostAround::translate(text);
    return found.view().starts_with(u'$') ? WString() : found;
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
