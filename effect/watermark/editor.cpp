#include "effect/watermark/editor.h"

#include "effect/watermark/editor_values.h"
#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

WatermarkDlg::WatermarkDlg(TabHost lender, SmartPtr<Dom::INode> edited, bool isNewRecord)
    : host(std::move(lender)),
      record(std::move(edited)),
      isNew(isNewRecord) {
  dialog = host.preferences->openDialog(Address::watermarkEditor);
  if (!dialog) return;
  connectWidgets();
  loadWatermark(record);
  dialog->runModally();
}

void WatermarkDlg::connectWidgets() {
  const bool hasBlack = host.properties->valueAllowed(Prop::watermarkColor, Value::colourBlack);
  colourCapable = hasBlack && host.properties->valueAllowed(Prop::watermarkColor, Value::colourNonBlack);
  blackOnly = hasBlack && !colourCapable;

  connect(*dialog->okSignal(), *this, &WatermarkDlg::onOk);
  connect(*dialog->cancelSignal(), *this, &WatermarkDlg::onCancel);
  for (const Name code : {u"UL", u"UC", u"UR", u"CL", u"CC", u"CR", u"LL", u"LC", u"LR"})
    if (const auto button = widget<Button>(code))
      connect(*button->clickSignal(), *this, &WatermarkDlg::onPositionButton);
  preview = widget<WMPreview>(WidgetId::preview);
  connectColours();
  connectNames();
  connectFont();
  connectAngle();
  connectPrintStyles();
  connectOpacity();
  fillFontNames();
  if (const auto button = widget<Button>(WidgetId::restoreDefaults))
    connect(*button->clickSignal(), *this, &WatermarkDlg::onRestoreDefaults);
}

void WatermarkDlg::onOk(SubDialogEventArg& event) {
  accepted = true;
  replaceImpossibleSize();
  askAboutNameClashes(event);
}

void WatermarkDlg::onCancel(SubDialogEventArg&) { accepted = false; }

void WatermarkDlg::onOverwriteOk(SubDialogEventArg&) { overwriteConfirmed = true; }

// A size out of range becomes the minimum, at either end. "12 pt" is read as 12.
void WatermarkDlg::replaceImpossibleSize() {
  const WString size = fieldText(*record, Field::fontsize);
  if (isFontSize(size.view())) {
    setField(*record, Field::fontsize, decimalText(leadingInteger(size.view())));
    return;
  }
  put(widget<TextBox>(WidgetId::fontSize), leastFontSize);
  applyFontSize(leastFontSize);
}

// The selected entry is the edited record's own. Name clashes count only among downloaded watermarks, and only among
// the others.
void WatermarkDlg::askAboutNameClashes(SubDialogEventArg& event) {
  const auto list = watermarkList();
  if (!list) return;
  const WString name = styleNameBox ? styleNameBox->text() : fieldText(*record, Field::stylename);
  const std::int32_t own = list->selectedIndex();
  const auto selected = list->selectedItem();
  const auto entries = list->data();
  bool isVetoed = false;
  for (std::int32_t i = 0; i < entries->count(); ++i) {
    const auto entry = entries->at(i);
    if (!isNew && i == own) continue;
    if (host.services.translate(entry->text()).view() != name.view()) continue;
    if (selected && entry->isMarked() != selected->isMarked()) continue;

    // The entry will be replaced, and the following ones move up.
    if (!confirmOverwrite())
      isVetoed = true;
    else if (i < list->selectedIndex())
      list->select(list->selectedIndex() - 1);
  }
  if (!isVetoed) return;
  event.vetoClose();
  // The dialog stays open and nothing is replaced yet, so the next OK must find the record's own entry selected.
  if (list->selectedIndex() != own) list->select(own);
}

bool WatermarkDlg::confirmOverwrite() {
  overwriteConfirmed = false;
  const auto question = dialog->openDialog(Address::overwrite);
  if (!question) return false;
  connect(*question->okSignal(), *this, &WatermarkDlg::onOverwriteOk);
  question->runModally();
  return overwriteConfirmed;
}

SmartPtr<ListBox> WatermarkDlg::watermarkList() const {
  return smartCast<ListBox>(dialog->parentWidgetById(WidgetId::watermarkList));
}

void WatermarkDlg::setEnabled(WStringView id, bool enabled) {
  if (const auto found = dialog->widgetById(id)) enabled ? found->enable() : found->disable();
}

void WatermarkDlg::put(const SmartPtr<TextBox>& box, WStringView text) {
  if (!box) return;
  inOwnText = true;
  box->setText(text);
  inOwnText = false;
}

}  // namespace Kiln::XUL
