// The colour in the watermark editor: a list of colours, and a picker for the custom one.
#pragma once

#include "effect/watermark/editor_context.h"

#include <cstdint>

namespace Kiln::XUL {

class EditorColour final : public SignalTarget {
 public:
  explicit EditorColour(const EditorContext& shared) : editor(shared) {}

  void connectWidgets();

  // Shows the colour, and writes it into the edited record.
  void load(Dom::INode& values);

 private:
  // The colours of watermarks that the model prints.
  enum class Support { none, blackOnly, all };

  Support supportOfModel() const;
  void showSwatches(ComboBox& colours) const;
  void onColourSelect(EventArg<ComboBox> event);
  void onCustomColour(EventArg<ColorPicker> event);
  void applyColourItem(ListItem& item);
  void applyCustomColour(std::uint32_t colour);
  void setColour(WStringView colour);
  bool selectColour(WStringView colour);
  SmartPtr<ListItem> customColourItem() const;
  SmartPtr<Image> swatch(WStringView colour) const;

  const EditorContext& editor;
  Support support = Support::none;
};

}  // namespace Kiln::XUL
