// A GUI that answers as another one does, and tells of each call first.
#pragma once

#include "check/around/watch.h"
#include "kiln/gui.h"

namespace Checking {

class GuiAround : public Kiln::XUL::GUI {
 public:
  using Ready = Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<Kiln::XUL::GUI>>>;

  // `readiness` is this GUI's own ready signal.
  GuiAround(Kiln::SmartPtr<Kiln::XUL::GUI> answering, Ready readiness, Watch& toldOfCalls)
      : inner(std::move(answering)),
        ready(std::move(readiness)),
        watch(toldOfCalls) {}

  void load(Kiln::WStringView url) override { at("GUI::load", false).load(url); }
  Ready readySignal() override {
    at("GUI::readySignal", false);
    return ready;
  }
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override {
    return at("GUI::widgetById", true).widgetById(id);
  }
  Kiln::SmartPtr<Kiln::XUL::TabPanel> tabPanel() override { return at("GUI::tabPanel", true).tabPanel(); }
  Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override {
    return at("GUI::openDialog", true).openDialog(url);
  }

 protected:
  const Kiln::SmartPtr<Kiln::XUL::GUI> inner;
  const Ready ready;

 private:
  Kiln::XUL::GUI& at(const char* operation, bool needsReady) {
    watch.calling(operation, needsReady);
    return *inner;
  }

  Watch& watch;
};

}  // namespace Checking
