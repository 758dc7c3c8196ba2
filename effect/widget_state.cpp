#include "effect/widget_state.h"

namespace Effect {

void enableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget) {
  if (widget) widget->enable();
}

void disableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget) {
  if (widget) widget->disable();
}

void clearIfThere(const Kiln::SmartPtr<Kiln::XUL::Toggle>& box) {
  if (!box) return;
  box->setChecked(false);
  box->setEnabled(false);
}

}  // namespace Effect
