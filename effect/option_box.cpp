#include "effect/option_box.h"

namespace Effect {

void followValue(Kiln::XUL::Toggle* box, const Kiln::ModelSelectionChange& change, Name onValue) {
  if (box != nullptr) box->setChecked(change.value.view() == onValue);
}

void followAvailability(Kiln::XUL::Toggle* box, const Kiln::ModelEnableChange& change, Name onValue) {
  if (box != nullptr && change.option.view() == onValue) box->setEnabled(change.enabled);
}

}  // namespace Effect
