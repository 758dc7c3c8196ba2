#include "effect/overlay/multi_overlay_dlg.h"

#include <algorithm>
#include <iterator>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The tab's list starts with the items for no overlay and for several.
constexpr std::int32_t headItems = 2;

// The colour of every overlay to choose from.
constexpr Name sourceColour = u"#FF0000";

struct RuleButton {
  Name id;
  std::size_t slot;
  Name rule;
};

constexpr RuleButton ruleButtons[] = {
    {WidgetId::firstMasterAll, 0, Value::allPages},  {WidgetId::firstMasterEven, 0, Value::evenPages},
    {WidgetId::firstMasterOdd, 0, Value::oddPages},  {WidgetId::secondMasterEven, 1, Value::evenPages},
    {WidgetId::secondMasterOdd, 1, Value::oddPages},
};

}  // namespace

MultiOverlayDlg::MultiOverlayDlg(DialogHost lender, GUI& preferences) : host(std::move(lender)) {
  dialog = preferences.openDialog(Address::multipleOverlay);
  if (!dialog) return;
  dialog->registerImage(blankBitmap, Address::blankPage);
  connectWidgets();
  fillSource();
  const auto details = host.properties->modelProperties()->child(Prop::multipleOverlayDetails);
  show((details ? details->wideValue() : WString()).view());
}

void MultiOverlayDlg::run() { dialog ? dialog->runModally() : withdrawFirstChoice(); }

void MultiOverlayDlg::connectWidgets() {
  connect(*dialog->okSignal(), *this, &MultiOverlayDlg::onOk);
  connect(*dialog->cancelSignal(), *this, &MultiOverlayDlg::onCancel);

  using ClickHandler = void (MultiOverlayDlg::*)(EventArg<Button>);
  const std::pair<Name, ClickHandler> buttons[] = {
      {WidgetId::overlayAdd, &MultiOverlayDlg::onAdd},
      {WidgetId::overlayAddManual, &MultiOverlayDlg::onAddManual},
      {WidgetId::overlayClear, &MultiOverlayDlg::onClear},
      {WidgetId::overlayDefaults, &MultiOverlayDlg::onRestoreDefaults},
      {WidgetId::overlayHelp, &MultiOverlayDlg::onHelp},
  };
  for (const auto& [id, handler] : buttons)
    if (const auto button = widget<Button>(id)) connect(*button->clickSignal(), *this, handler);
  for (const RuleButton& rule : ruleButtons)
    if (const auto button = widget<RadioButton>(rule.id))
      connect(*button->changeSignal(), *this, &MultiOverlayDlg::onRule);

  source = widget<ListBox>(WidgetId::overlaySource);
  if (source) connect(*source->changeSignal(), *this, &MultiOverlayDlg::onSourceChange);
  connectSlots(std::make_index_sequence<slotCount>());
}

template <std::size_t... slot>
void MultiOverlayDlg::connectSlots(std::index_sequence<slot...>) {
  const auto connectSlot = [this](std::size_t index, auto onDropped, auto onChosen, auto onChanged) {
    if (const auto image = widget<ImageBox>(WidgetId::slotImages[index])) {
      slots[index].bind(image);
      connect(*image->dropSignal(), *this, onDropped);
      connect(*image->menuSignal(), *this, onChosen);
    }
    if (const auto box = pagesBox(index)) {
      connect(*box->typingSignal(), *this, onChanged);
      connect(*box->pastingSignal(), *this, onChanged);
    }
  };
  (connectSlot(slot, &MultiOverlayDlg::onDrop<slot>, &MultiOverlayDlg::onMenu<slot>, &MultiOverlayDlg::onPages<slot>),
   ...);
}

void MultiOverlayDlg::onOk(SubDialogEventArg&) {
  SlotContents contents;
  std::transform(slots.begin(), slots.end(), contents.begin(), [](const OvlThumbnail& slot) {
    return slot.isOccupied() ? SlotContent{slot.label(), slot.pages()} : SlotContent();
  });
  const std::u16string files = sourceFilesOf(
      contents, [this](std::size_t slot) { return pathOf(slots[slot].label(), slots[slot].isDownloaded()); });

  const auto transition = host.properties->transition(Prop::overlaySel, Value::multiple);
  transition->add(Prop::overlayImage, Value::multipleOverlayImage);
  transition->add(Prop::overlaySourceFileName, files);
  transition->add(Prop::multipleOverlayDetails, detailsOf(contents));
  host.properties->submit(transition);
}

void MultiOverlayDlg::onCancel(SubDialogEventArg&) { withdrawFirstChoice(); }

// Reverts to None when several overlays were selected but never assigned.
void MultiOverlayDlg::withdrawFirstChoice() {
  const auto model = host.properties->modelProperties();
  const auto details = model->child(Prop::multipleOverlayDetails);
  const auto selection = model->child(Prop::overlaySel);
  if (!details || !details->equals(u"") || !selection || !selection->equals(Value::multiple)) return;
  const auto transition = host.properties->transition(Prop::overlaySel, Value::none);
  transition->add(Prop::overlayImage, Value::none);
  host.properties->submit(transition);
}

void MultiOverlayDlg::onHelp(EventArg<Button>) { host.services.showHelpTopic(Address::baseHelp, multipleOverlayTopic); }

void MultiOverlayDlg::fillSource() {
  const auto box = smartCast<ComboBox>(dialog->parentWidgetById(WidgetId::overlayList));
  if (!source || !box) return;
  const auto overlays = box->data();
  const auto list = host.services.listData();
  for (std::int32_t i = headItems; i < overlays->count(); ++i) {
    const auto overlay = overlays->at(i);
    const auto picture = thumbnail(overlay->value().view(), overlay->isMarked());
    if (!picture) continue;
    const auto item = list->append(overlay->displayedText(), overlay->value());
    item->setImage(picture);
    item->setColour(sourceColour);
    item->setMarked(overlay->isMarked());
  }
  source->setData(list);
}

void MultiOverlayDlg::onSourceChange(EventArg<ListBox>) { refreshButtons(); }

void MultiOverlayDlg::refreshButtons() {
  const bool hasOverlay = source && source->selectedItem();
  for (const Name id : {WidgetId::overlayAdd, WidgetId::overlayAddManual})
    if (const auto button = widget<Button>(id)) button->setEnabled(hasOverlay);
}

// A downloaded overlay and the user's own may have the same value; prefers the selected item, which is usually the one
// dragged.
SmartPtr<ListItem> MultiOverlayDlg::sourceItem(Text value) {
  if (!source) return {};
  if (const auto selected = source->selectedItem(); selected && selected->value().view() == value) return selected;
  const auto list = source->data();
  for (std::int32_t i = 0; i < list->count(); ++i)
    if (const auto item = list->at(i); item->value().view() == value) return item;
  return {};
}

// The item that is `headItems` before the end of the tab's list, or the only overlay.
SmartPtr<ListItem> MultiOverlayDlg::defaultOverlay() {
  const auto box = smartCast<ComboBox>(dialog->parentWidgetById(WidgetId::overlayList));
  if (!box) return {};
  const auto overlays = box->data();
  return overlays->at(std::max(overlays->count() - headItems, headItems));
}

std::u16string MultiOverlayDlg::pathOf(Text label, bool isDownloaded) { return host.store.pathOf(label, isDownloaded); }

// The bitmap beside the overlay's file.
SmartPtr<Image> MultiOverlayDlg::thumbnail(Text label, bool isDownloaded) {
  const auto ending = label.find(u".opa");
  const std::u16string path = pathOf(label, isDownloaded);
  if (ending != label.npos && path != Value::none) {
    const auto bitmap = host.services.path(path)->folder()->join(std::u16string(label.substr(0, ending)) + u".bmp");
    if (const auto picture = host.services.image(bitmap->text(), {})) return picture;
  }
  return host.services.image(Address::missingThumbnail, {});
}

void MultiOverlayDlg::show(Text details) {
  clearAll();
  const auto overlay = defaultOverlay();
  const WString defaultLabel = overlay ? overlay->value() : WString();
  const auto contents = readDetails(details, defaultLabel.view(), [this](Text label) { return isThere(label); });
  if (!contents) return restoreDefaults();
  // An empty first slot gets the default overlay, whose origin is known.
  const bool beginsWithDefault = details.starts_with(u';');
  for (std::size_t i = 0; i < slotCount; ++i) {
    const auto& [label, pages] = (*contents)[i];
    if (label.empty()) continue;
    place(i, label, i == 0 && beginsWithDefault ? overlay->isMarked() : isOnlyDownloaded(label), pages);
  }
  refreshButtons();
}

void MultiOverlayDlg::restoreDefaults() {
  clearAll();
  if (const auto overlay = defaultOverlay()) {
    selectInSource(*overlay);
    place(0, overlay->value().view(), overlay->isMarked(), firstRule(0));
  }
  refreshButtons();
}

// A downloaded overlay and the user's own may have the same value.
void MultiOverlayDlg::selectInSource(ListItem& overlay) {
  if (!source) return;
  const auto items = source->data();
  for (std::int32_t i = 0; i < items->count(); ++i) {
    const auto item = items->at(i);
    if (item->value().view() != overlay.value().view() || item->isMarked() != overlay.isMarked()) continue;
    source->select(i);
    return;
  }
}

void MultiOverlayDlg::onRestoreDefaults(EventArg<Button>) { restoreDefaults(); }

bool MultiOverlayDlg::isThere(Text label) {
  const std::u16string path = pathOf(label, isOnlyDownloaded(label));
  return path != Value::none && host.services.path(path)->exists();
}

// Saved labels do not distinguish downloaded overlays from the user's own, which take precedence.
bool MultiOverlayDlg::isOnlyDownloaded(Text label) { return pathOf(label, false) == Value::none; }

void MultiOverlayDlg::onAdd(EventArg<Button>) { addToFirstFree(0, masterSlots); }

void MultiOverlayDlg::onAddManual(EventArg<Button>) { addToFirstFree(masterSlots, slotCount); }

void MultiOverlayDlg::addToFirstFree(std::size_t from, std::size_t to) {
  const auto item = source ? source->selectedItem() : SmartPtr<ListItem>();
  if (!item) return;
  while (from < to && slots[from].isOccupied()) ++from;
  if (from < to) place(from, item->value().view(), item->isMarked(), firstRule(from));
}

template <std::size_t slot>
void MultiOverlayDlg::onDrop(WString value) {
  dropOn(slot, value.view());
}

// A replacing overlay keeps the slot's pages; a master's rule may be chosen before its overlay.
void MultiOverlayDlg::dropOn(std::size_t slot, Text value) {
  const auto item = sourceItem(value);
  if (!item) return;
  const bool keepsPages = slots[slot].isOccupied() || (slot < masterSlots && !slots[slot].pages().empty());
  const std::u16string pages(keepsPages ? Text(slots[slot].pages()) : firstRule(slot));
  place(slot, value, item->isMarked(), pages);
}

void MultiOverlayDlg::place(std::size_t slot, Text label, bool isDownloaded, Text pages) {
  slots[slot].setPages(pages);
  slots[slot].setLabel(label, isDownloaded, thumbnail(label, isDownloaded));
  showPages(slot);
  if (slot < masterSlots) keepMastersApart();
}

void MultiOverlayDlg::onRule(EventArg<Toggle> event) {
  const WString id = event.source().id();
  const auto* chosen = std::find_if(std::begin(ruleButtons), std::end(ruleButtons),
                                    [&](const RuleButton& button) { return button.id == id.view(); });
  if (chosen == std::end(ruleButtons)) return;
  slots[chosen->slot].setPages(chosen->rule);
  keepMastersApart();
}

template <std::size_t slot>
void MultiOverlayDlg::onPages(SmartPtr<TextChangeEventArg> change) {
  takePages(slot, *change);
}

// Accepts provisional input too: input methods are not needed for page lists.
void MultiOverlayDlg::takePages(std::size_t slot, TextChangeEventArg& change) {
  const WString text = change.text();
  if (isPageList(text.view()))
    slots[slot].setPages(text.view());
  else
    change.refuse();
}

void MultiOverlayDlg::showPages(std::size_t slot) {
  for (const RuleButton& rule : ruleButtons)
    if (const auto button = widget<RadioButton>(rule.id); button && rule.slot == slot)
      button->setChecked(rule.rule == slots[slot].pages());
  if (const auto box = pagesBox(slot)) box->setText(slots[slot].pages());
}

SmartPtr<TextBox> MultiOverlayDlg::pagesBox(std::size_t slot) const {
  return slot < masterSlots ? SmartPtr<TextBox>() : widget<TextBox>(WidgetId::slotPages[slot - masterSlots]);
}

void MultiOverlayDlg::keepMastersApart() {
  const bool areBothOccupied = slots[0].isOccupied() && slots[1].isOccupied();
  const Text rule = ruleBeside(slots[0].pages(), slots[1].pages(), areBothOccupied);
  if (rule == slots[1].pages()) return;
  slots[1].setPages(rule);
  showPages(1);
}

void MultiOverlayDlg::onClear(EventArg<Button>) {
  const auto choice = widget<ComboBox>(WidgetId::overlayClearChoice);
  const auto item = choice ? choice->selectedItem() : SmartPtr<ListItem>();
  if (!item) return;
  const WString value = item->value();
  const auto* chosen = std::find(std::begin(clearChoices), std::end(clearChoices), value.view());
  if (chosen != std::end(clearChoices)) clear(static_cast<std::size_t>(chosen - std::begin(clearChoices)));
}

template <std::size_t slot>
void MultiOverlayDlg::onMenu(WString item) {
  if (item.view() == clearItem) clear(slot);
}

void MultiOverlayDlg::clear(std::size_t slot) {
  slots[slot].clear();
  showPages(slot);
}

void MultiOverlayDlg::clearAll() {
  for (std::size_t slot = 0; slot < slotCount; ++slot) clear(slot);
}

}  // namespace Kiln::XUL
