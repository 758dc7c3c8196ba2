// The page effects of the tab: mirror image, negative image, the two rotations by 180 degrees, and whatever else
// Formats::PageEffects lists.
#pragma once

#include "effect/page_effect_box.h"

#include <list>
#include <span>

namespace Kiln::XUL {

// Connects each effect's box in one order. An effect without a handler of its own here goes to its box's.
class PageTransforms final : public SignalTarget {
 public:
  // `lender` outlives the object. The effects include those that have handlers here.
  explicit PageTransforms(const TabHost& lender,
                          std::span<const Effect::PageEffect> effects = Effect::PageEffects::all);

  // Takes the box of Rotate180ForA3LD away where the customisation says so.
  void setupRotate180ForA3LD();

  // Connect what happens to the effects' properties.
  void connectEnableChanges(ModelRoot& model);
  void connectSelectionChanges(ModelRoot& model);

  // Finds the boxes and connects them.
  void bindBoxes();

  void NegativeSelectionChange(ModelSelectionChange& change);
  void MirrorSelectionChange(ModelSelectionChange& change);
  void Rotate180SelectionChange(ModelSelectionChange& change);
  void Rotate180ForA3LDSelectionChange(ModelSelectionChange& change);
  void DisableNegativeImage(ModelEnableChange& change);
  void DisableMirrorImage(ModelEnableChange& change);
  void DisableRotate180(ModelEnableChange& change);
  void OnClickNegativeImage(EventArg<Toggle> event);
  void OnClickMirrorImage(EventArg<Toggle> event);
  void OnClickRotate180(EventArg<Toggle> event);
  void OnClickRotate180ForA3LD(EventArg<Toggle> event);
  void sendNegativeImageTransitions(bool on);
  void sendMirrorTransitions(bool on);
  void sendRotate180Transitions(bool on);

 private:
  PageEffectBox& boxOf(const Effect::PageEffect& effect);
  const SmartPtr<CheckBox>& bind(PageEffectBox& effectBox);
  bool hidesMirrorImage() const;
  bool hidesRotate180ForA3LD() const;

  const TabHost& host;
  std::list<PageEffectBox> boxes;  // in the order of the effects
};

}  // namespace Kiln::XUL
