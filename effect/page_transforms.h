// The page transforms of the tab: mirror image, negative image, and the two rotations by 180 degrees.
#pragma once

#include "effect/tab_host.h"

namespace Kiln::XUL {

class PageTransforms final : public SignalTarget {
 public:
  // `lender` outlives the object.
  explicit PageTransforms(const TabHost& lender) : host(lender) {}

  // Takes the box of Rotate180ForA3LD away where the customisation says so.
  void setupRotate180ForA3LD();

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
  bool hidesMirrorImage() const;
  bool hidesRotate180ForA3LD() const;

  const TabHost& host;

  // Each empty when the layout has no such widget.
  SmartPtr<CheckBox> rotate180Box;
  SmartPtr<CheckBox> rotate180ForA3LDBox;
  SmartPtr<CheckBox> negativeImageBox;
  SmartPtr<CheckBox> mirrorImageBox;
};

}  // namespace Kiln::XUL
