// A change of a widget by the editor itself. It fires the widget's signals, like user input; a handler that finds it
// running ignores it.
#pragma once

#include "kiln/widgets.h"

namespace Kiln::XUL {

class OwnChange {
 public:
  // A null widget is ignored.
  void setText(const SmartPtr<TextBox>& box, WStringView text) {
    const Running now(running);
    if (box) box->setText(text);
  }
  void setPosition(const SmartPtr<ScrollBar>& bar, std::int32_t position) {
    const Running now(running);
    if (bar) bar->setPosition(position);
  }

  bool isRunning() const { return running; }

 private:
  // Ends the change also when the host throws.
  class Running {
   public:
    explicit Running(bool& changedFlag) : flag(changedFlag) { flag = true; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { flag = false; }

   private:
    bool& flag;
  };

  bool running = false;
};

}  // namespace Kiln::XUL
