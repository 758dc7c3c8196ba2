// Mirror image, negative image, and the two rotations by 180 degrees.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// Checks the box for any value but "None"; a box that the layout does not have is skipped.
void checkUnlessNone(CheckBox* box, const WString& value) {
  if (box != nullptr) box->setChecked(value.view() != Value::none);
}

Name onOrNone(bool on, Name onValue) { return on ? onValue : Value::none; }

}  // namespace

void EffectPlugin::setupRotate180ForA3LD() {
  const auto customisation = propertyManager()->xmlCustomisation();
  const auto is = [&customisation](Name key, Name value) {
    const auto found = customisation->child(key);
    return found && found->equals(value);
  };
  if (!is(Prop::xmlCustomisation, Value::customisationTrue)) return;
  if (!is(Prop::a3LD180Degree, Value::customisationFalse)) return;
  if (const auto box = tabHost.preferences->widgetById(WidgetId::rotate180ForA3LD)) {
    box->setVisible(false);
    box->disable();
  }
}

void EffectPlugin::bindPageTransforms() {
  transforms.rotate180Box = tabHost.widget<CheckBox>(WidgetId::rotate180);
  if (transforms.rotate180Box) connect(*transforms.rotate180Box->clickSignal(), *this, &EffectPlugin::OnClickRotate180);

  transforms.rotate180ForA3LDBox = tabHost.widget<CheckBox>(WidgetId::rotate180ForA3LD);
  if (transforms.rotate180ForA3LDBox) {
    connect(*transforms.rotate180ForA3LDBox->clickSignal(), *this, &EffectPlugin::OnClickRotate180ForA3LD);
    const auto byController = propertyManager()->configuration()->child(Setting::a3LDRotation);
    transforms.rotate180ForA3LDBox->setLabel(
        byController && byController->boolValue() ? Token::rotate180ForA3LDByController : Token::rotate180ForA3LD);
  }

  transforms.negativeImageBox = tabHost.widget<CheckBox>(WidgetId::negativeImage);
  if (transforms.negativeImageBox)
    connect(*transforms.negativeImageBox->clickSignal(), *this, &EffectPlugin::OnClickNegativeImage);

  transforms.mirrorImageBox = tabHost.widget<CheckBox>(WidgetId::mirrorImage);
  if (transforms.mirrorImageBox) {
    connect(*transforms.mirrorImageBox->clickSignal(), *this, &EffectPlugin::OnClickMirrorImage);
    if (hidesMirrorImage()) transforms.mirrorImageBox->hide();
  }
}

bool EffectPlugin::hidesMirrorImage() {
  return tabHost.propertyIs(Prop::modelNumber, Value::modelKVT) || tabHost.propertyIs(Prop::outputPDL, Value::pclxl) ||
         tabHost.propertyIs(Prop::driverTech, Value::pscript);
}

bool EffectPlugin::hidesRotate180ForA3LD() {
  return tabHost.propertyIs(Prop::modelNumber, Value::modelKVT) ||
         tabHost.propertyIs(Prop::modelSelection, Value::familyTarra) ||
         tabHost.propertyIs(Prop::modelSelection, Value::familyVarnholt) ||
         tabHost.propertyIs(Prop::modelSelection, Value::familyQuellspire) ||
         tabHost.propertyIs(Prop::product, Value::productTev);
}

void EffectPlugin::NegativeSelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(transforms.negativeImageBox.get(), change.value);
}

void EffectPlugin::MirrorSelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(transforms.mirrorImageBox.get(), change.value);
}

void EffectPlugin::Rotate180SelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(transforms.rotate180Box.get(), change.value);
}

// Unlike the others this one treats an empty value as on.
void EffectPlugin::Rotate180ForA3LDSelectionChange(ModelSelectionChange& change) {
  checkUnlessNone(transforms.rotate180ForA3LDBox.get(), change.value);
}

// Deliberately different: an unavailable negative image is unchecked and disabled; an unavailable mirror image is
// hidden and keeps its mark.
void EffectPlugin::DisableNegativeImage(ModelEnableChange& change) {
  const auto& box = transforms.negativeImageBox;
  if (!box || change.option.view() != Value::negative) return;
  if (change.enabled) {
    box->enable();
    return;
  }
  box->setChecked(false);
  box->disable();
  if (tabHost.propertyIs(Prop::modelNumber, Value::modelKVT)) box->hide();
}

void EffectPlugin::DisableMirrorImage(ModelEnableChange& change) {
  const auto& box = transforms.mirrorImageBox;
  if (!box || change.option.view() != Value::mirrorImage) return;
  if (change.enabled) {
    box->setVisible(true);
    box->enable();
    return;
  }
  box->setVisible(false);
  if (tabHost.propertyIs(Prop::modelNumber, Value::modelKVT)) box->hide();
}

void EffectPlugin::DisableRotate180(ModelEnableChange& change) {
  if (change.option.view() == Value::none) return;
  const bool isForA3LD = change.property.view() == Prop::rotate180ForA3LD;
  if (!isForA3LD && change.property.view() != Prop::rotate180) return;
  const auto& box = isForA3LD ? transforms.rotate180ForA3LDBox : transforms.rotate180Box;
  if (!box) return;
  if (change.enabled) {
    box->enable();
    return;
  }
  box->disable();
  if (isForA3LD ? hidesRotate180ForA3LD() : tabHost.propertyIs(Prop::modelNumber, Value::modelKVT)) box->hide();
}

void EffectPlugin::OnClickNegativeImage(EventArg<Toggle> event) {
  sendNegativeImageTransitions(event.source().isChecked());
}

void EffectPlugin::OnClickMirrorImage(EventArg<Toggle> event) { sendMirrorTransitions(event.source().isChecked()); }

void EffectPlugin::OnClickRotate180(EventArg<Toggle> event) { sendRotate180Transitions(event.source().isChecked()); }

void EffectPlugin::OnClickRotate180ForA3LD(EventArg<Toggle> event) {
  tabHost.send({{Prop::rotate180ForA3LD, onOrNone(event.source().isChecked(), Value::rotate180)}});
}

void EffectPlugin::sendNegativeImageTransitions(bool on) {
  tabHost.send({{Prop::negativeImage, onOrNone(on, Value::negative)}});
}

void EffectPlugin::sendMirrorTransitions(bool on) {
  tabHost.send({{Prop::mirrorImage, onOrNone(on, Value::mirrorImage)}});
}

void EffectPlugin::sendRotate180Transitions(bool on) {
  tabHost.send({{Prop::rotate180, onOrNone(on, Value::rotate180)}});
}

}  // namespace Kiln::XUL
