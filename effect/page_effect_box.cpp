#include "effect/page_effect_box.h"

namespace Kiln::XUL {

using namespace Effect;

void PageEffectBox::SelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) mark(change.value);
}

void PageEffectBox::Disable(ModelEnableChange& change) {
  if (!box || change.option.view() == Value::none) return;
  if (change.enabled) {
    box->enable();
    return;
  }
  box->disable();
  if (host.propertyIs(Prop::modelNumber, Value::modelKVT)) box->hide();
}

void PageEffectBox::OnClick(EventArg<Toggle> event) { sendTransitions(event.source().isChecked()); }

void PageEffectBox::sendTransitions(bool on) { host.send({{effect.property, on ? effect.on : Value::none}}); }

void PageEffectBox::mark(const WString& value) {
  if (box) box->setChecked(value.view() != Value::none);
}

}  // namespace Kiln::XUL
