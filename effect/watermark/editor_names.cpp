// The text of the watermark, and its name in the list.
#include "effect/watermark/editor.h"
#include "effect/watermark/editor_values.h"

#include <algorithm>
#include <vector>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The name of the "None" entry in every installed language.
std::vector<std::u16string> namesOfNone(Host& host) {
  std::vector<std::u16string> names;
  const auto locales = host.locales(u"base");
  for (std::int32_t i = 0; i < locales->count(); ++i) {
    const std::u16string table = u"chrome://base/content/" + locales->at(i).str() + u"/strings.dtd";
    names.push_back(host.lookUp(table, Token::none).str());
  }
  return names;
}

}  // namespace

void WatermarkDlg::connectNames() {
  const auto textBox = widget<TextBox>(WidgetId::textBox);
  styleNameBox = widget<TextBox>(WidgetId::styleNameBox);
  for (const auto& box : {textBox, styleNameBox}) {
    if (!box) continue;
    box->setMaximumLength(mostTextUnits);
    connect(*box->typingSignal(), *this, &WatermarkDlg::onLabelText);
    connect(*box->pastingSignal(), *this, &WatermarkDlg::onLabelText);
  }
  const auto support = host.properties->configuration()->child(Setting::styleNameSupport);
  hasStyleNames = support && support->boolValue();
  if (hasStyleNames) return;
  if (const auto row = dialog->widgetById(WidgetId::styleNameRow)) row->hide();
}

void WatermarkDlg::onLabelText(SmartPtr<TextChangeEventArg> change) {
  if (inOwnText) return;
  const bool isStyleName = styleNameBox && change->source() == styleNameBox;
  if (hasStyleNames)
    takeLabelOrStyleName(change->text(), isStyleName);
  else
    takeBoth(change->text(), isStyleName);
  const WString name = fieldText(*record, Field::stylename);
  updateOkButton(fieldText(*record, Field::label), name, isReservedName(name));
}

// The name follows the text until the user types a name.
void WatermarkDlg::takeLabelOrStyleName(WStringView text, bool isStyleName) {
  setField(*record, isStyleName ? Field::stylename : Field::label, text);
  if (isStyleName) {
    if (text.size() != 0) styleNameEdited = true;
  } else if (!styleNameEdited) {
    setField(*record, Field::stylename, text);
    put(styleNameBox, text);
  }
  if (preview) preview->setText(fieldText(*record, Field::label));
}

void WatermarkDlg::takeBoth(WStringView text, bool isStyleName) {
  if (!isStyleName) setField(*record, Field::label, text);
  setField(*record, Field::stylename, text);
  put(styleNameBox, text);
  if (preview) preview->setText(text);
}

void WatermarkDlg::updateOkButton(WStringView label, WStringView stylename, bool forceDisable) {
  const bool canAccept = label.size() != 0 && stylename.size() != 0 && !forceDisable;
  const auto button = dialog->okButton();
  canAccept ? button->enable() : button->disable();
}

// The reference to these names is reserved too: the store rejects records that have it.
bool WatermarkDlg::isReservedName(WStringView text) {
  static const std::vector<std::u16string> reserved = namesOfNone(host.services);
  return text.view() == Token::none || std::find(reserved.begin(), reserved.end(), text.view()) != reserved.end();
}

}  // namespace Kiln::XUL
