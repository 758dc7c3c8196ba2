#include "effect/watermark/editor.h"

#include "effect/watermark/editor_ranges.h"

namespace Kiln::XUL {

using namespace Effect;

WatermarkDlg::WatermarkDlg(TabHost lender, SmartPtr<Dom::INode> edited, bool isNewRecord, IdsOfName stored)
    : shared{std::move(lender), std::move(edited), {}, {}},
      names(shared),
      colour(shared),
      font(shared),
      placement(shared),
      printStyle(shared),
      clashes(shared, isNewRecord, std::move(stored)) {
  shared.dialog = shared.host.preferences->openDialog(Address::watermarkEditor);
  if (!shared.dialog) return;
  connectWidgets();
  if (!shared.record) return;
  const Node original = shared.record->clone();
  load(original);
  keepWhatCannotBeShown(shared.host.services, *original, *shared.record);
}

void WatermarkDlg::run() {
  if (shared.dialog) shared.dialog->runModally();
}

void WatermarkDlg::connectWidgets() {
  connect(*shared.dialog->okSignal(), *this, &WatermarkDlg::onOk);
  connect(*shared.dialog->cancelSignal(), *this, &WatermarkDlg::onCancel);
  placement.connectPositions();
  shared.preview = shared.widget<WMPreview>(WidgetId::preview);
  colour.connectWidgets();
  names.connectWidgets();
  font.connectStyleAndSize();
  placement.connectAngle();
  printStyle.connectWidgets();
  font.fillFaces();
  if (const auto button = shared.widget<Button>(WidgetId::restoreDefaults))
    connect(*button->clickSignal(), *this, &WatermarkDlg::onRestoreDefaults);
}

// Loads a record into the widgets, and through them into the edited record.
void WatermarkDlg::load(const SmartPtr<Dom::INode>& source) {
  const Node values = shownValues(shared.host.services, *source);
  names.load(*values);
  colour.load(*values);
  font.load(*values);
  placement.load(*values);
  printStyle.load(*values);
}

void WatermarkDlg::onOk(SubDialogEventArg& event) {
  accepted = true;
  font.replaceImpossibleSize();
  clashes.ask(event);
}

void WatermarkDlg::onCancel(SubDialogEventArg&) { accepted = false; }

void WatermarkDlg::onRestoreDefaults(EventArg<Button>) {
  const Node own = shared.record->child(Field::defaultSetting);
  load(own ? own : noneRecord(shared.host.services, {}));
  names.startAgainIfEmpty();
}

}  // namespace Kiln::XUL
