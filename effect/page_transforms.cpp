#include "effect/page_transforms.h"

#include "effect/settings.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// Checks the box for any value but "None"; a box that the layout does not have is skipped.
void checkUnlessNone(CheckBox* box, const WString& value) {
  if (box != nullptr) box->setChecked(value.view() != Value::none);
}

Name onOrNone(bool on, Name onValue) { return on ? onValue : Value::none; }

}  // namespace

void PageTransforms::setupRotate180ForA3LD() {
  const auto customisation = host.properties->xmlCustomisation();
  const auto is = [&customisation](Name key, Name value) {
    const auto found = customisation->child(key);
    return found && found->equals(value);
  };
  if (!is(Prop::xmlCustomisation, Value::customisationTrue)) return;
  if (!is(Prop::a3LD180Degree, Value::customisationFalse)) return;
  if (const auto box = host.preferences->widgetById(WidgetId::rotate180ForA3LD)) {
    box->setVisible(false);
    box->disable();
  }
}

void PageTransforms::bindBoxes() {
  rotate180Box = host.widget<CheckBox>(WidgetId::rotate180);
  if (rotate180Box) connect(*rotate180Box->clickSignal(), *this, &PageTransforms::OnClickRotate180);

  rotate180ForA3LDBox = host.widget<CheckBox>(WidgetId::rotate180ForA3LD);
  if (rotate180ForA3LDBox) {
    connect(*rotate180ForA3LDBox->clickSignal(), *this, &PageTransforms::OnClickRotate180ForA3LD);
    const bool isByController = settingFlag(*host.properties->configuration(), Setting::a3LDRotation);
    rotate180ForA3LDBox->setLabel(isByController ? Token::rotate180ForA3LDByController : Token::rotate180ForA3LD);
  }

  negativeImageBox = host.widget<CheckBox>(WidgetId::negativeImage);
  if (negativeImageBox) connect(*negativeImageBox->clickSignal(), *this, &PageTransforms::OnClickNegativeImage);

  mirrorImageBox = host.widget<CheckBox>(WidgetId::mirrorImage);
  if (mirrorImageBox) {
    connect(*mirrorImageBox->clickSignal(), *this, &PageTransforms::OnClickMirrorImage);
    if (hidesMirrorImage()) mirrorImageBox->hide();
  }
}

bool PageTransforms::hidesMirrorImage() const {
  return host.propertyIs(Prop::modelNumber, Value::modelKVT) || host.propertyIs(Prop::outputPDL, Value::pclxl) ||
         host.propertyIs(Prop::driverTech, Value::pscript);
}

bool PageTransforms::hidesRotate180ForA3LD() const {
  return host.propertyIs(Prop::modelNumber, Value::modelKVT) ||
         host.propertyIs(Prop::modelSelection, Value::familyTarra) ||
         host.propertyIs(Prop::modelSelection, Value::familyVarnholt) ||
         host.propertyIs(Prop::modelSelection, Value::familyQuellspire) ||
         host.propertyIs(Prop::product, Value::productTev);
}

void PageTransforms::NegativeSelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(negativeImageBox.get(), change.value);
}

void PageTransforms::MirrorSelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(mirrorImageBox.get(), change.value);
}

void PageTransforms::Rotate180SelectionChange(ModelSelectionChange& change) {
  if (!change.value.empty()) checkUnlessNone(rotate180Box.get(), change.value);
}

// Unlike the others this one treats an empty value as on.
void PageTransforms::Rotate180ForA3LDSelectionChange(ModelSelectionChange& change) {
  checkUnlessNone(rotate180ForA3LDBox.get(), change.value);
}

// Deliberately different: an unavailable negative image is unchecked and disabled; an unavailable mirror image is
// hidden and keeps its mark.
void PageTransforms::DisableNegativeImage(ModelEnableChange& change) {
  if (!negativeImageBox || change.option.view() != Value::negative) return;
  if (change.enabled) {
    negativeImageBox->enable();
    return;
  }
  negativeImageBox->setChecked(false);
  negativeImageBox->disable();
  if (host.propertyIs(Prop::modelNumber, Value::modelKVT)) negativeImageBox->hide();
}

void PageTransforms::DisableMirrorImage(ModelEnableChange& change) {
  if (!mirrorImageBox || change.option.view() != Value::mirrorImage) return;
  if (change.enabled) {
    mirrorImageBox->setVisible(true);
    mirrorImageBox->enable();
    return;
  }
  mirrorImageBox->setVisible(false);
  if (host.propertyIs(Prop::modelNumber, Value::modelKVT)) mirrorImageBox->hide();
}

void PageTransforms::DisableRotate180(ModelEnableChange& change) {
  if (change.option.view() == Value::none) return;
  const bool isForA3LD = change.property.view() == Prop::rotate180ForA3LD;
  if (!isForA3LD && change.property.view() != Prop::rotate180) return;
  const auto& box = isForA3LD ? rotate180ForA3LDBox : rotate180Box;
  if (!box) return;
  if (change.enabled) {
    box->enable();
    return;
  }
  box->disable();
  if (isForA3LD ? hidesRotate180ForA3LD() : host.propertyIs(Prop::modelNumber, Value::modelKVT)) box->hide();
}

void PageTransforms::OnClickNegativeImage(EventArg<Toggle> event) {
  sendNegativeImageTransitions(event.source().isChecked());
}

void PageTransforms::OnClickMirrorImage(EventArg<Toggle> event) { sendMirrorTransitions(event.source().isChecked()); }

void PageTransforms::OnClickRotate180(EventArg<Toggle> event) { sendRotate180Transitions(event.source().isChecked()); }

void PageTransforms::OnClickRotate180ForA3LD(EventArg<Toggle> event) {
  host.send({{Prop::rotate180ForA3LD, onOrNone(event.source().isChecked(), Value::rotate180)}});
}

void PageTransforms::sendNegativeImageTransitions(bool on) {
  host.send({{Prop::negativeImage, onOrNone(on, Value::negative)}});
}

void PageTransforms::sendMirrorTransitions(bool on) {
  host.send({{Prop::mirrorImage, onOrNone(on, Value::mirrorImage)}});
}

void PageTransforms::sendRotate180Transitions(bool on) {
  host.send({{Prop::rotate180, onOrNone(on, Value::rotate180)}});
}

}  // namespace Kiln::XUL
