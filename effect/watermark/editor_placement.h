// Where the text stands on the page in the watermark editor: nine positions, and an angle.
#pragma once

#include "effect/watermark/editor_context.h"
#include "effect/watermark/number_with_bar.h"

namespace Kiln::XUL {

class EditorPlacement final : public SignalTarget {
 public:
  explicit EditorPlacement(const EditorContext& shared);

  void connectPositions();
  void connectAngle();

  // Shows angle and position, and writes them into the edited record.
  void load(Dom::INode& values);

 private:
  void onPositionButton(EventArg<Button> event);
  void applyPosition(WStringView code);
  void applyAngle(std::int32_t degrees);

  const EditorContext& editor;
  NumberWithBar angle;
};

}  // namespace Kiln::XUL
