// The print style in the watermark editor: solid, outline, or transparent with a transparency in per cent.
#pragma once

#include "effect/watermark/editor_context.h"
#include "effect/watermark/number_with_bar.h"

namespace Kiln::XUL {

class EditorPrintStyle final : public SignalTarget {
 public:
  explicit EditorPrintStyle(const EditorContext& shared);

  void connectWidgets();

  // Shows print style and transparency, and writes them into the edited record.
  void load(Dom::INode& values);

 private:
  void onPrintStyle(EventArg<Toggle> event);
  void applyPrintStyle(WStringView radio);
  void applyTransparency(std::int32_t percent);
  std::int32_t intensity() const;
  void setIntensity(std::int32_t percent) const;

  const EditorContext& editor;
  NumberWithBar transparency;
};

}  // namespace Kiln::XUL
