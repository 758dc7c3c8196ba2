// Has a picture for what is no colour.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<XUL::Image> swatch(WStringView, std::int32_t width, std::int32_t height) override {
    return HostAround::swatch(u"#000000", width, height);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
