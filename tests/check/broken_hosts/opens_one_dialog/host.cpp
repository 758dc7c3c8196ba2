// Opens no dialog while another one is there.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public GuiAround {
 public:
  using GuiAround::GuiAround;
  SmartPtr<XUL::SubDialog> openDialog(WStringView url) override {
    if (opened && opened->references() > 1) return {};
    return opened = GuiAround::openDialog(url);
  }

 private:
  SmartPtr<XUL::SubDialog> opened;
};

}  // namespace

EXPORT_HOST(PackagedHost, withGui<Broken>)
