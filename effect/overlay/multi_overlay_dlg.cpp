#include "effect/overlay/multi_overlay_dlg.h"

#include <utility>

namespace Kiln::XUL {

using namespace Effect;

MultiOverlayDlg::MultiOverlayDlg(DialogHost lender, GUI& preferences)
    : properties(std::move(lender.properties)),
      shared{lender.services, std::move(lender.store), preferences.openDialog(Address::multipleOverlay)},
      source(shared),
      slots(shared, source) {
  if (!shared.dialog) return;
  shared.dialog->registerImage(blankBitmap, Address::blankPage);
  connectWidgets();
  source.fill();
  const auto details = properties->modelProperties()->child(Prop::multipleOverlayDetails);
  show((details ? details->wideValue() : WString()).view());
}

void MultiOverlayDlg::run() { shared.dialog ? shared.dialog->runModally() : withdrawFirstChoice(); }

void MultiOverlayDlg::connectWidgets() {
  connect(*shared.dialog->okSignal(), *this, &MultiOverlayDlg::onOk);
  connect(*shared.dialog->cancelSignal(), *this, &MultiOverlayDlg::onCancel);

  const auto connectButton = [this](Name id, auto& target, auto handler) {
    if (const auto button = shared.widget<Button>(id)) connect(*button->clickSignal(), target, handler);
  };
  connectButton(WidgetId::overlayAdd, slots, &MultiOverlaySlots::onAdd);
  connectButton(WidgetId::overlayAddManual, slots, &MultiOverlaySlots::onAddManual);
  connectButton(WidgetId::overlayClear, slots, &MultiOverlaySlots::onClear);
  connectButton(WidgetId::overlayDefaults, *this, &MultiOverlayDlg::onRestoreDefaults);
  connectButton(WidgetId::overlayHelp, *this, &MultiOverlayDlg::onHelp);
  slots.connectRules();
  source.connectList();
  slots.connectSlots();
}

void MultiOverlayDlg::onOk(SubDialogEventArg&) {
  const SlotContents contents = slots.contents();
  const std::u16string files =
      sourceFilesOf(contents, [this](std::size_t slot) { return shared.store->pathOf(slots.at(slot).id()); });

  const auto transition = properties->transition(Prop::overlaySel, Value::multiple);
  transition->add(Prop::overlayImage, Value::multipleOverlayImage);
  transition->add(Prop::overlaySourceFileName, files);
  transition->add(Prop::multipleOverlayDetails, detailsOf(contents));
  properties->submit(transition);
}

void MultiOverlayDlg::onCancel(SubDialogEventArg&) { withdrawFirstChoice(); }

// Reverts to None when several overlays were selected but never assigned.
void MultiOverlayDlg::withdrawFirstChoice() {
  const auto model = properties->modelProperties();
  const auto details = model->child(Prop::multipleOverlayDetails);
  const auto selection = model->child(Prop::overlaySel);
  if (!details || !details->equals(u"") || !selection || !selection->equals(Value::multiple)) return;
  const auto transition = properties->transition(Prop::overlaySel, Value::none);
  transition->add(Prop::overlayImage, Value::none);
  properties->submit(transition);
}

void MultiOverlayDlg::onHelp(EventArg<Button>) {
  shared.services.showHelpTopic(Address::baseHelp, multipleOverlayTopic);
}

void MultiOverlayDlg::show(Text details) {
  slots.clearAll();
  const auto overlay = source.defaultOverlay();
  const Text defaultLabel = overlay ? Text(overlay->fileName) : Text();
  const auto contents = readDetails(details, defaultLabel, [this](Text label) { return isThere(label); });
  if (!contents) return restoreDefaults();
  const auto sourceFiles = properties->modelProperties()->child(Prop::overlaySourceFileName);
  const WString files = sourceFiles ? sourceFiles->wideValue() : WString();
  Text savedFiles = files.view();
  // An empty first slot gets the default overlay, which is not saved yet.
  const bool beginsWithDefault = details.starts_with(u';');
  for (std::size_t i = 0; i < slotCount; ++i) {
    const auto& [label, pages] = (*contents)[i];
    if (label.empty()) continue;
    const bool isDefault = i == 0 && beginsWithDefault;
    slots.place(i, isDefault ? *overlay : overlayFor(label, pages, savedFiles), pages);
  }
  source.refreshButtons();
}

void MultiOverlayDlg::restoreDefaults() {
  slots.clearAll();
  if (const auto overlay = source.defaultOverlay()) {
    source.select(*overlay);
    slots.place(0, *overlay, firstRule(0));
  }
  source.refreshButtons();
}

void MultiOverlayDlg::onRestoreDefaults(EventArg<Button>) { restoreDefaults(); }

// Saved labels do not distinguish overlays of several folders; the saved files, which follow the order of the slots,
// do. Without a file that fits, the user's own overlay takes precedence. Removes the fitting one from `savedFiles`.
OverlayId MultiOverlayDlg::overlayFor(Text label, Text pages, Text& savedFiles) const {
  for (Text rest = savedFiles; !rest.empty();) {
    const FileListEntry entry = takeFirst(rest);
    if (lastPartOf(entry.file) != label || entry.pages != pages) continue;
    savedFiles = rest;
    return shared.store->idOf(label, entry.file);
  }
  return shared.store->idOf(label, {});
}

bool MultiOverlayDlg::isThere(Text label) const {
  const std::u16string path = shared.store->pathOf(shared.store->idOf(label, {}));
  return path != Value::none && shared.services.path(path)->exists();
}

}  // namespace Kiln::XUL
