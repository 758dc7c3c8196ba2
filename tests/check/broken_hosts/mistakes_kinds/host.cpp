// Has a label where a box is.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public GuiAround {
 public:
  using GuiAround::GuiAround;
  SmartPtr<XUL::Widget> widgetById(WStringView id) override {
    return GuiAround::widgetById(id.view() == u"box" ? u"lbl" : id);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withGui<Broken>)
