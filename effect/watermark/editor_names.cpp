#include "effect/watermark/editor_names.h"

#include "effect/settings.h"
#include "effect/watermark/editor_ranges.h"

#include <algorithm>
#include <vector>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The name of the "None" entry in every installed language whose texts can be read.
std::vector<std::u16string> namesOfNone(Host& host) {
  std::vector<std::u16string> names;
  const auto locales = host.locales(u"base");
  for (std::int32_t i = 0; i < locales->count(); ++i) {
    const std::u16string table = u"chrome://base/content/" + locales->at(i).str() + u"/strings.dtd";
    try {
      names.push_back(host.lookUp(table, Token::none).str());
    } catch (const Exception&) {
      // A damaged translation must not keep the others from being used.
    }
  }
  return names;
}

}  // namespace

void EditorNames::connectWidgets() {
  const auto textBox = editor.widget<TextBox>(WidgetId::textBox);
  styleNameBox = editor.widget<TextBox>(WidgetId::styleNameBox);
  for (const auto& box : {textBox, styleNameBox}) {
    if (!box) continue;
    box->setMaximumLength(mostTextUnits);
    connect(*box->typingSignal(), *this, &EditorNames::onLabelText);
    connect(*box->pastingSignal(), *this, &EditorNames::onLabelText);
  }
  hasStyleNames = settingFlag(*editor.host.properties->configuration(), Setting::styleNameSupport);
  if (hasStyleNames) return;
  if (const auto row = editor.dialog->widgetById(WidgetId::styleNameRow)) row->hide();
}

void EditorNames::load(Dom::INode& values) {
  if (const auto box = editor.widget<TextBox>(WidgetId::textBox)) {
    const std::u16string label = shownText(fieldText(values, Field::label));
    setField(*editor.record, Field::label, label);
    ownChange.setText(box, label);
    if (editor.preview) editor.preview->setText(label);
  }
  if (styleNameBox) {
    const std::u16string name = shownText(fieldText(values, Field::stylename));
    setField(*editor.record, Field::stylename, name);
    ownChange.setText(styleNameBox, name);
  }
  updateOkButton(fieldText(*editor.record, Field::label), fieldText(*editor.record, Field::stylename), false);
}

void EditorNames::startAgainIfEmpty() {
  if (fieldText(*editor.record, Field::label).empty() && fieldText(*editor.record, Field::stylename).empty())
    styleNameEdited = false;
}

// A field's text as displayed: empty for a watermark without a text, and truncated to the maximum input length.
std::u16string EditorNames::shownText(WStringView text) const {
  if (text.view() == Token::none) return {};
  if (!text.view().starts_with(u'$')) return std::u16string(cutToBox(text));
  return std::u16string(cutToBox(editor.host.services.translate(text).view()));
}

// The record is written last, so that a change that the host refuses because something failed leaves it as it was.
void EditorNames::onLabelText(SmartPtr<TextChangeEventArg> change) {
  if (ownChange.isRunning()) return;
  const bool isStyleName = styleNameBox && change->source() == styleNameBox;
  const WString text = change->text();

  // The name follows the text until the user types a name.
  const bool changesLabel = !isStyleName;
  const bool changesName = isStyleName || !hasStyleNames || !styleNameEdited;
  const WString label = changesLabel ? text : fieldText(*editor.record, Field::label);
  const WString name = changesName ? text : fieldText(*editor.record, Field::stylename);
  const bool isReserved = isReservedName(name);

  if (!hasStyleNames || (changesName && !isStyleName)) ownChange.setText(styleNameBox, name);
  if (editor.preview) editor.preview->setText(hasStyleNames ? label : text);
  updateOkButton(label, name, isReserved);
  if (changesLabel) setField(*editor.record, Field::label, label);
  if (changesName) setField(*editor.record, Field::stylename, name);
  if (hasStyleNames && isStyleName && !text.view().empty()) styleNameEdited = true;
}

void EditorNames::updateOkButton(WStringView label, WStringView stylename, bool forceDisable) const {
  const bool canAccept = label.size() != 0 && stylename.size() != 0 && !forceDisable;
  const auto button = editor.dialog->okButton();
  canAccept ? button->enable() : button->disable();
}

// The reference to these names is reserved too: the store rejects records that have it.
bool EditorNames::isReservedName(WStringView text) const {
  static const std::vector<std::u16string> reserved = namesOfNone(editor.host.services);
  return text.view() == Token::none || std::find(reserved.begin(), reserved.end(), text.view()) != reserved.end();
}

}  // namespace Kiln::XUL
