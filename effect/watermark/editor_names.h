// The text of the watermark and its name in the list, in the watermark editor.
#pragma once

#include "effect/watermark/editor_context.h"
#include "effect/watermark/own_change.h"

#include <string>

namespace Kiln::XUL {

class EditorNames final : public SignalTarget {
 public:
  explicit EditorNames(const EditorContext& shared) : editor(shared) {}

  void connectWidgets();

  // Shows text and name, and writes them into the edited record as shown.
  void load(Dom::INode& values);

  // Where the defaults have neither text nor name, the name follows the text again.
  void startAgainIfEmpty();

 private:
  void onLabelText(SmartPtr<TextChangeEventArg> change);
  void updateOkButton(WStringView label, WStringView stylename, bool forceDisable) const;
  bool isReservedName(WStringView text) const;
  std::u16string shownText(WStringView text) const;

  const EditorContext& editor;
  SmartPtr<TextBox> styleNameBox;
  bool hasStyleNames = false;    // a watermark's name has a field of its own
  bool styleNameEdited = false;  // the user has typed a name
  OwnChange ownChange;
};

}  // namespace Kiln::XUL
