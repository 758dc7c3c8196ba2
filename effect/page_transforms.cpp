#include "effect/page_transforms.h"

#include "effect/settings.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The handlers of an effect with rules or names of its own.
struct OwnHandlers {
  PageEffect effect;
  void (PageTransforms::*selectionChange)(ModelSelectionChange&);
  void (PageTransforms::*enableChange)(ModelEnableChange&);
  void (PageTransforms::*click)(EventArg<Toggle>);
};

constexpr OwnHandlers ownHandlers[] = {
    {PageEffects::negativeImage, &PageTransforms::NegativeSelectionChange, &PageTransforms::DisableNegativeImage,
     &PageTransforms::OnClickNegativeImage},
    {PageEffects::mirrorImage, &PageTransforms::MirrorSelectionChange, &PageTransforms::DisableMirrorImage,
     &PageTransforms::OnClickMirrorImage},
    {PageEffects::rotate180, &PageTransforms::Rotate180SelectionChange, &PageTransforms::DisableRotate180,
     &PageTransforms::OnClickRotate180},
    {PageEffects::rotate180ForA3LD, &PageTransforms::Rotate180ForA3LDSelectionChange, &PageTransforms::DisableRotate180,
     &PageTransforms::OnClickRotate180ForA3LD},
};

// Null for an effect without.
const OwnHandlers* ownHandlersOf(const PageEffect& effect) {
  const auto* own = std::ranges::find(ownHandlers, effect, &OwnHandlers::effect);
  return own == std::end(ownHandlers) ? nullptr : own;
}

}  // namespace

PageTransforms::PageTransforms(const TabHost& lender, std::span<const PageEffect> effects) : host(lender) {
  for (const PageEffect& effect : effects) boxes.emplace_back(lender, effect);
}

PageEffectBox& PageTransforms::boxOf(const PageEffect& effect) {
  return *std::ranges::find(boxes, effect, &PageEffectBox::effect);
}

void PageTransforms::setupRotate180ForA3LD() {
  const auto customisation = host.properties->xmlCustomisation();
  const auto is = [&customisation](Name key, Name value) {
    const auto found = customisation->child(key);
    return found && found->equals(value);
  };
  if (!is(Customisation::xmlCustomisation, Value::customisationTrue)) return;
  if (!is(Customisation::a3LD180Degree, Value::customisationFalse)) return;
  if (const auto box = host.preferences->widgetById(PageEffects::rotate180ForA3LD.box)) {
    box->setVisible(false);
    box->disable();
  }
}

void PageTransforms::connectEnableChanges(ModelRoot& model) {
  for (PageEffectBox& box : boxes) {
    const auto signal = model.enableChangeSignal(box.effect.property);
    if (const OwnHandlers* own = ownHandlersOf(box.effect))
      connect(*signal, *this, own->enableChange);
    else
      connect(*signal, box, &PageEffectBox::Disable);
  }
}

void PageTransforms::connectSelectionChanges(ModelRoot& model) {
  for (PageEffectBox& box : boxes) {
    const auto signal = model.selectionChangeSignal(box.effect.property);
    if (const OwnHandlers* own = ownHandlersOf(box.effect))
      connect(*signal, *this, own->selectionChange);
    else
      connect(*signal, box, &PageEffectBox::SelectionChange);
  }
}

void PageTransforms::bindBoxes() {
  bind(boxOf(PageEffects::rotate180));
  if (const auto& box = bind(boxOf(PageEffects::rotate180ForA3LD))) {
    const bool isByController = settingFlag(*host.properties->configuration(), Setting::a3LDRotation);
    box->setLabel(isByController ? Token::rotate180ForA3LDByController : Token::rotate180ForA3LD);
  }
  bind(boxOf(PageEffects::negativeImage));
  if (const auto& box = bind(boxOf(PageEffects::mirrorImage)); box && hidesMirrorImage()) box->hide();
  for (PageEffectBox& box : boxes)
    if (ownHandlersOf(box.effect) == nullptr) bind(box);
}

// Finds the effect's check box and connects it; empty when the layout has none.
const SmartPtr<CheckBox>& PageTransforms::bind(PageEffectBox& effectBox) {
  effectBox.find();
  if (!effectBox.box) return effectBox.box;
  const auto signal = effectBox.box->clickSignal();
  if (const OwnHandlers* own = ownHandlersOf(effectBox.effect))
    connect(*signal, *this, own->click);
  else
    connect(*signal, effectBox, &PageEffectBox::OnClick);
  return effectBox.box;
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
  boxOf(PageEffects::negativeImage).SelectionChange(change);
}

void PageTransforms::MirrorSelectionChange(ModelSelectionChange& change) {
  boxOf(PageEffects::mirrorImage).SelectionChange(change);
}

void PageTransforms::Rotate180SelectionChange(ModelSelectionChange& change) {
  boxOf(PageEffects::rotate180).SelectionChange(change);
}

// Unlike the others this one treats an empty value as on.
void PageTransforms::Rotate180ForA3LDSelectionChange(ModelSelectionChange& change) {
  boxOf(PageEffects::rotate180ForA3LD).mark(change.value);
}

// Deliberately different: an unavailable negative image is unchecked and disabled; an unavailable mirror image is
// hidden and keeps its mark.
void PageTransforms::DisableNegativeImage(ModelEnableChange& change) {
  PageEffectBox& negative = boxOf(PageEffects::negativeImage);
  if (!negative.box || change.option.view() != negative.effect.on) return;
  if (!change.enabled) negative.box->setChecked(false);
  negative.Disable(change);
}

void PageTransforms::DisableMirrorImage(ModelEnableChange& change) {
  const PageEffectBox& mirror = boxOf(PageEffects::mirrorImage);
  if (!mirror.box || change.option.view() != mirror.effect.on) return;
  if (change.enabled) {
    mirror.box->setVisible(true);
    mirror.box->enable();
    return;
  }
  mirror.box->setVisible(false);
  if (host.propertyIs(Prop::modelNumber, Value::modelKVT)) mirror.box->hide();
}

// Serves both rotations. On some models without rotation of A3 and Ledger the box of that one is hidden too.
void PageTransforms::DisableRotate180(ModelEnableChange& change) {
  if (change.property.view() == PageEffects::rotate180.property) return boxOf(PageEffects::rotate180).Disable(change);
  if (change.property.view() != PageEffects::rotate180ForA3LD.property) return;
  PageEffectBox& rotation = boxOf(PageEffects::rotate180ForA3LD);
  if (!rotation.box || change.option.view() == Value::none) return;
  if (change.enabled) {
    rotation.box->enable();
    return;
  }
  rotation.box->disable();
  if (hidesRotate180ForA3LD()) rotation.box->hide();
}

void PageTransforms::OnClickNegativeImage(EventArg<Toggle> event) {
  sendNegativeImageTransitions(event.source().isChecked());
}

void PageTransforms::OnClickMirrorImage(EventArg<Toggle> event) { sendMirrorTransitions(event.source().isChecked()); }

void PageTransforms::OnClickRotate180(EventArg<Toggle> event) { sendRotate180Transitions(event.source().isChecked()); }

void PageTransforms::OnClickRotate180ForA3LD(EventArg<Toggle> event) {
  boxOf(PageEffects::rotate180ForA3LD).OnClick(std::move(event));
}

void PageTransforms::sendNegativeImageTransitions(bool on) { boxOf(PageEffects::negativeImage).sendTransitions(on); }

void PageTransforms::sendMirrorTransitions(bool on) { boxOf(PageEffects::mirrorImage).sendTransitions(on); }

void PageTransforms::sendRotate180Transitions(bool on) { boxOf(PageEffects::rotate180).sendTransitions(on); }

}  // namespace Kiln::XUL
