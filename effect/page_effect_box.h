// The check box of one page effect.
#pragma once

#include "effect/tab_host.h"

namespace Kiln::XUL {

// Shows the effect's property and writes back what the user clicks. The handlers are the rules of every page effect
// that has none of its own.
class PageEffectBox final : public SignalTarget {
 public:
  // `lender` outlives the object.
  PageEffectBox(const TabHost& lender, const Effect::PageEffect& pageEffect) : effect(pageEffect), host(lender) {}

  // Finds the check box in the layout.
  void find() { box = host.widget<CheckBox>(effect.box); }

  // Checks the box for any value but "None"; an empty value leaves it as it is.
  void SelectionChange(ModelSelectionChange& change);

  // Disables the box of an unavailable effect; a KVT hides it for good.
  void Disable(ModelEnableChange& change);

  void OnClick(EventArg<Toggle> event);
  void sendTransitions(bool on);

  // Checks the box for any value but "None".
  void mark(const WString& value);

  const Effect::PageEffect effect;
  SmartPtr<CheckBox> box;  // empty when the layout has none

 private:
  const TabHost& host;
};

}  // namespace Kiln::XUL
