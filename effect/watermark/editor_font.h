// The face, style and size of the text in the watermark editor.
#pragma once

#include "effect/watermark/editor_context.h"
#include "effect/watermark/own_change.h"

namespace Kiln::XUL {

class EditorFont final : public SignalTarget {
 public:
  explicit EditorFont(const EditorContext& shared) : editor(shared) {}

  void connectStyleAndSize();
  void fillFaces();

  // Shows face, style and size, and writes them into the edited record.
  void load(Dom::INode& values);

  // Replaces a size out of range by the minimum, at either end. "12 pt" is read as 12; one that the user has not
  // changed stays as it is.
  void replaceImpossibleSize();

 private:
  void onFontName(EventArg<ComboBox> event);
  void onFontStyle(EventArg<ComboBox> event);
  void onFontSizeText(SmartPtr<TextChangeEventArg> change);
  void onFontSizeFocusLost(EventArg<TextBox> event);
  void applyFontName(WStringView face);
  void applyFontStyle(WStringView style);
  void applyFontSize(WStringView text);
  void putSize(const SmartPtr<TextBox>& box, WStringView size);

  const EditorContext& editor;
  OwnChange ownChange;
  WString loadedSize;
};

}  // namespace Kiln::XUL
