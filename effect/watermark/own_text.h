// Texts that the editor itself puts into a box. Setting a text fires the box's signals, like user input; the box's
// handler asks isPutting, and ignores such a text.
#pragma once

#include "kiln/widgets.h"

namespace Kiln::XUL {

class OwnText {
 public:
  // `box` may be null. Does not throw: the box's handler does nothing.
  void put(const SmartPtr<TextBox>& box, WStringView text) {
    if (!box) return;
    putting = true;
    box->setText(text);
    putting = false;
  }

  bool isPutting() const { return putting; }

 private:
  bool putting = false;
};

}  // namespace Kiln::XUL
