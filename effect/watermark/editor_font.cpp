#include "effect/watermark/editor_font.h"

#include "effect/watermark/editor_ranges.h"
#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

void EditorFont::connectStyleAndSize() {
  if (const auto styles = editor.widget<ComboBox>(WidgetId::fontStyle))
    connect(*styles->changeSignal(), *this, &EditorFont::onFontStyle);
  const auto size = editor.widget<TextBox>(WidgetId::fontSize);
  if (!size) return;
  connect(*size->typingSignal(), *this, &EditorFont::onFontSizeText);
  connect(*size->pastingSignal(), *this, &EditorFont::onFontSizeText);
  connect(*size->blurSignal(), *this, &EditorFont::onFontSizeFocusLost);
}

void EditorFont::fillFaces() {
  const auto faces = editor.widget<ComboBox>(WidgetId::fontName);
  const auto installed = editor.host.services.fontNames();
  if (!faces || !installed) return;
  faces->setSorted(true);
  const auto items = faces->data();
  for (std::int32_t i = 0; i < installed->count(); ++i) items->append(installed->at(i), installed->at(i));
  faces->setData(items);
  connect(*faces->changeSignal(), *this, &EditorFont::onFontName);
}

// Keeps a face that is not installed, with no entry selected: another machine may have it.
void EditorFont::load(Dom::INode& values) {
  const WString face = fieldText(values, Field::fontname);
  const auto faces = editor.widget<ComboBox>(WidgetId::fontName);
  if (faces && !faces->selectValue(face)) faces->select(-1);
  applyFontName(face);

  const WString style = fieldText(values, Field::fontstyle);
  if (const auto styles = editor.widget<ComboBox>(WidgetId::fontStyle)) styles->selectValue(style);
  applyFontStyle(style);

  const WString size = fieldText(values, Field::fontsize);
  putSize(editor.widget<TextBox>(WidgetId::fontSize), size);
  loadedSize = size;
}

void EditorFont::replaceImpossibleSize() {
  const WString size = fieldText(*editor.record, Field::fontsize);
  if (isFontSize(size.view())) {
    if (size.view() != loadedSize.view())
      setField(*editor.record, Field::fontsize, decimalText(leadingInteger(size.view())));
    return;
  }
  putSize(editor.widget<TextBox>(WidgetId::fontSize), leastFontSize);
}

void EditorFont::onFontName(EventArg<ComboBox> event) {
  if (const auto item = event.source().selectedItem()) applyFontName(item->value());
}

void EditorFont::applyFontName(WStringView face) {
  setField(*editor.record, Field::fontname, face);
  if (editor.preview) editor.preview->setFontFace(face);
}

void EditorFont::onFontStyle(EventArg<ComboBox> event) {
  if (const auto item = event.source().selectedItem()) applyFontStyle(item->value());
}

void EditorFont::applyFontStyle(WStringView style) {
  const bool isBoth = style.view() == FontStyle::boldItalic;
  if (editor.preview) {
    editor.preview->setBold(isBoth || style.view() == FontStyle::bold);
    editor.preview->setItalic(isBoth || style.view() == FontStyle::italic);
  }
  setField(*editor.record, Field::fontstyle, style);
}

// Accepts any input; an invalid size is replaced when the box loses the focus, and on OK.
void EditorFont::onFontSizeText(SmartPtr<TextChangeEventArg> change) {
  if (!ownChange.isRunning() && !change->isProvisional()) applyFontSize(change->text());
}

void EditorFont::onFontSizeFocusLost(EventArg<TextBox> event) {
  if (!isFontSize(event.source().text().view())) putSize(&event.source(), leastFontSize);
}

void EditorFont::putSize(const SmartPtr<TextBox>& box, WStringView size) {
  ownChange.setText(box, size);
  applyFontSize(size);
}

void EditorFont::applyFontSize(WStringView text) {
  if (editor.preview) editor.preview->setFontSize(leadingNumber(text));
  setField(*editor.record, Field::fontsize, text);
}

}  // namespace Kiln::XUL
