#include "effect/watermark/editor_placement.h"

#include "effect/watermark/editor_ranges.h"
#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The angle at the lowest position of the scroll bar.
constexpr std::int32_t leastAngle = -90;

}  // namespace

EditorPlacement::EditorPlacement(const EditorContext& shared)
    : editor(shared),
      angle(leastAngle, angleOf, [this](std::int32_t degrees) { applyAngle(degrees); }) {}

void EditorPlacement::connectPositions() {
  for (const Name code : WidgetId::positions)
    if (const auto button = editor.widget<Button>(code))
      connect(*button->clickSignal(), *this, &EditorPlacement::onPositionButton);
}

void EditorPlacement::connectAngle() {
  angle.connectWidgets(editor.widget<IntegerTextBox>(WidgetId::angle), editor.widget<ScrollBar>(WidgetId::angleBar));
}

void EditorPlacement::load(Dom::INode& values) {
  angle.load(fieldText(values, Field::angle));
  applyPosition(fieldText(values, Field::positionY).str() + fieldText(values, Field::positionX).str());
}

void EditorPlacement::onPositionButton(EventArg<Button> event) { applyPosition(event.source().id()); }

void EditorPlacement::applyPosition(WStringView code) {
  if (editor.preview) editor.preview->setPosition(code);
  setField(*editor.record, Field::positionX, code.view().substr(1, 1));
  setField(*editor.record, Field::positionY, code.view().substr(0, 1));
}

void EditorPlacement::applyAngle(std::int32_t degrees) {
  setField(*editor.record, Field::angle, decimalText(degrees));
  if (editor.preview) editor.preview->setRotation(degrees < 0 ? degrees + 360 : degrees);
}

}  // namespace Kiln::XUL
