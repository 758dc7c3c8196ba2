// Has a label that is always enabled.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Enabled final : public XUL::Label {
 public:
  explicit Enabled(SmartPtr<XUL::Label> answering) : inner(std::move(answering)) {}

  void hide() override { inner->hide(); }
  void enable() override { inner->enable(); }
  void disable() override {}
  void setVisible(bool visible) override { inner->setVisible(visible); }
  void setEnabled(bool) override {}
  bool isEnabled() override { return inner->isEnabled(); }
  WString id() override { return inner->id(); }
  NativeWindow nativeWindow() override { return inner->nativeWindow(); }
  void setLabel(WStringView text) override { inner->setLabel(text); }
  void setImage(SmartPtr<XUL::Image> image) override { inner->setImage(std::move(image)); }

 private:
  SmartPtr<XUL::Label> inner;
};

class Broken final : public GuiAround {
 public:
  using GuiAround::GuiAround;
  SmartPtr<XUL::Widget> widgetById(WStringView id) override {
    const auto found = GuiAround::widgetById(id);
    if (id.view() != u"lbl") return found;
    return make<Enabled>(smartCast<XUL::Label>(found));
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withGui<Broken>)
