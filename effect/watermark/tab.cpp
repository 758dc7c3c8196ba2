// The watermark side of the tab: display and signal handlers. changes.cpp adds, edits and deletes.
#include "effect/effect_plugin.h"
#include "effect/list_order.h"
#include "effect/option_box.h"
#include "effect/watermark/numbers.h"
#include "effect/widget_state.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The none entry stays at the top of the list.
constexpr std::int32_t fixedEntries = 1;

std::u16string integerText(Dom::INode& record, Name field) {
  return decimalText(leadingInteger(fieldText(record, field).view()));
}

// A colour in the print path's form, with a transparency in front: "#00" and the six digits.
std::u16string printColour(std::u16string_view colour) {
  return u"#00" + std::u16string(colour.substr(std::min<std::size_t>(1, colour.size()), 6));
}

std::u16string transparencyText(Dom::INode& record) {
  const Node transparency = record.child(Field::transparency);
  const bool applies = fieldText(record, Field::printStyle).view() == PrintStyle::transparency;
  return applies && transparency ? integerText(*transparency, Field::intensity) : u"0";
}

}  // namespace

void EffectPlugin::setupWM() {
  watermark.store = newWatermarks();
  bindWatermarkWidgets();
  showWatermarks();
  if (watermark.list) connect(*watermark.list->changeSignal(), *this, &EffectPlugin::onWMChange);
  if (watermark.addButton) connect(*watermark.addButton->clickSignal(), *this, &EffectPlugin::onAddWM);
  if (watermark.editButton) connect(*watermark.editButton->clickSignal(), *this, &EffectPlugin::onEditWM);
  if (watermark.deleteButton) connect(*watermark.deleteButton->clickSignal(), *this, &EffectPlugin::onDeleteWM);
  if (watermark.firstPageBox) connect(*watermark.firstPageBox->changeSignal(), *this, &EffectPlugin::onWMFirstPage);
  if (watermark.perPageBox) connect(*watermark.perPageBox->changeSignal(), *this, &EffectPlugin::onWMPerPage);
  if (watermark.store->isFull()) disableIfThere(watermark.addButton);
}

SmartPtr<Watermarks> EffectPlugin::newWatermarks() {
  SmartPtr<Watermarks> store(new (host().allocator()) Watermarks(host(), propertyManager(), false));
  if (!store) throw std::bad_alloc();
  return store;
}

void EffectPlugin::bindWatermarkWidgets() {
  watermark.list = tabHost.widget<ListBox>(WidgetId::watermarkList);
  watermark.addButton = tabHost.widget<Button>(WidgetId::watermarkAdd);
  watermark.editButton = tabHost.widget<Button>(WidgetId::watermarkEdit);
  watermark.deleteButton = tabHost.widget<Button>(WidgetId::watermarkDelete);
  watermark.firstPageBox = tabHost.widget<Toggle>(WidgetId::watermarkFirstPage);
  watermark.perPageBox = tabHost.widget<Toggle>(WidgetId::watermarkPerPage);
  watermark.caption = tabHost.preferences->widgetById(WidgetId::watermarkCaption);
}

void EffectPlugin::showWatermarks() {
  if (!watermark.list) return;
  const auto items = host().listData();
  watermark.store->fillList(*items, host().image(Address::downloadedIcon, globalScope));
  orderByLabel(*items, fixedEntries);
  watermark.list->setData(items);
}

// Sorts and shows the current items.
void EffectPlugin::refreshWatermarkList() {
  if (!watermark.list) return;
  const auto items = watermark.list->data();
  orderByLabel(*items, fixedEntries);
  watermark.list->setData(items);
}

void EffectPlugin::onWMChange(EventArg<ListBox> event) {
  if (const auto item = event.source().selectedItem()) selectWatermark(item->value().view());
}

// Selecting none turns the watermark off.
void EffectPlugin::selectWatermark(std::u16string_view id) {
  tabHost.send({{Prop::watermarkSel, id}, {Prop::watermark, id == noneId ? Value::none : Value::watermark}});
}

void EffectPlugin::WMSelectionChange(ModelSelectionChange& change) {
  const bool isLocked = tabHost.isLocked(Prop::watermarkSel);
  // At print time the files may have changed since they were read.
  if (!watermark.store || tabHost.uiMode() == modePrePrint) watermark.store = newWatermarks();

  const std::u16string id = knownWatermark(change.value.view());
  writeWatermarkDetails(id);
  if (watermark.list) watermark.list->selectValue(id);
  if (watermark.editButton && watermark.deleteButton && watermark.perPageBox && !isLocked) {
    const bool isAny = id != noneId;
    watermark.editButton->setEnabled(isAny);
    watermark.deleteButton->setEnabled(isAny);
    watermark.perPageBox->setEnabled(isAny);
  }
  if (id == noneId) tabHost.send({{Prop::watermark, Value::none}});
}

// The record's id, else its downloaded form, else none.
std::u16string EffectPlugin::knownWatermark(std::u16string_view id) {
  if (watermark.store->record(id)) return std::u16string(id);
  const auto marksDownloaded = propertyManager()->configuration()->child(Setting::userDataSupport);
  std::u16string downloadedId = std::u16string(id) + std::u16string(downloadedEnding);
  if (marksDownloaded && marksDownloaded->boolValue() && watermark.store->record(downloadedId)) return downloadedId;
  return std::u16string(noneId);
}

// Writes the record's fields in the form that the print path reads.
void EffectPlugin::writeWatermarkDetails(std::u16string_view id) {
  Dom::INode& record = *watermark.store->record(id);
  const auto model = propertyManager()->modelProperties();
  const auto write = [&model](Name property, WStringView value) {
    if (const auto found = model->child(property)) found->setValue(value);
  };
  const auto copy = [&](Name property, Name field) { write(property, fieldText(record, field)); };

  write(Prop::watermarkText, id == noneId ? WString() : host().translate(fieldText(record, Field::label)));
  copy(Prop::watermarkTextWidth, Field::positionX);
  copy(Prop::watermarkTextHeight, Field::positionY);
  write(Prop::watermarkTextScale, Value::yes);
  write(Prop::watermarkLayering, Value::overlay);
  write(Prop::watermarkTextFontSize, integerText(record, Field::fontsize));
  // The print path counts clockwise, with 360 for upright text.
  write(Prop::watermarkTextAngle,
        decimalText(std::int64_t{360} - leadingInteger(fieldText(record, Field::angle).view())));
  copy(Prop::watermarkTextStyle, Field::fontstyle);
  copy(Prop::watermarkTextFont, Field::fontname);
  write(Prop::watermarkTextColour, printColour(fieldText(record, Field::colour).view()));
  write(Prop::watermarkTextTransparency, transparencyText(record));
  const bool isOutline = fieldText(record, Field::printStyle).view() == PrintStyle::outline;
  write(Prop::watermarkTextOutline, isOutline ? Value::yes : Value::no);
}

void EffectPlugin::DisableWM(ModelEnableChange& change) {
  if (tabHost.isLocked(Prop::watermarkSel)) {
    // The user cannot change the selection, only see it.
    if (watermark.list) watermark.list->selectValue(tabHost.propertyValue(Prop::watermarkSel));
    disableIfThere(watermark.addButton);
    disableIfThere(watermark.editButton);
    disableIfThere(watermark.deleteButton);
  } else if (change.enabled) {
    offerWatermarks();
  } else {
    withdrawWatermarks();
  }
}

void EffectPlugin::offerWatermarks() {
  enableIfThere(watermark.list);
  enableIfThere(watermark.caption);
  if (tabHost.propertyIs(Prop::watermarkSel, noneId)) {
    disableIfThere(watermark.editButton);
    disableIfThere(watermark.deleteButton);
    tabHost.send({{Prop::watermark, Value::none}, {Prop::watermarkSel, noneId}});
  } else {
    enableIfThere(watermark.editButton);
    enableIfThere(watermark.deleteButton);
  }
  if (!watermark.store->isFull()) enableIfThere(watermark.addButton);
}

void EffectPlugin::withdrawWatermarks() {
  if (watermark.list) watermark.list->select(0);
  disableIfThere(watermark.list);
  disableIfThere(watermark.caption);
  disableIfThere(watermark.addButton);
  disableIfThere(watermark.editButton);
  disableIfThere(watermark.deleteButton);
  tabHost.send({{Prop::watermark, Value::none}, {Prop::watermarkSel, noneId}});
}

void EffectPlugin::FirstPageSelectionChange(ModelSelectionChange& change) {
  followValue(watermark.firstPageBox.get(), change, Value::yes);
}

void EffectPlugin::WMOccuranceSelectionChange(ModelSelectionChange& change) {
  followValue(watermark.perPageBox.get(), change, Value::perPage);
}

void EffectPlugin::DisableWMFirstPageOnly(ModelEnableChange& change) {
  followAvailability(watermark.firstPageBox.get(), change, Value::yes);
}

void EffectPlugin::DisableWMOccurance(ModelEnableChange& change) {
  followAvailability(watermark.perPageBox.get(), change, Value::perPage);
}

void EffectPlugin::onWMFirstPage(EventArg<Toggle> event) {
  tabHost.send({{Prop::firstPageOnly, event.source().isChecked() ? Value::yes : Value::no}});
}

void EffectPlugin::onWMPerPage(EventArg<Toggle> event) {
  tabHost.send({{Prop::watermarkOccurance, event.source().isChecked() ? Value::perPage : Value::none}});
}

}  // namespace Kiln::XUL
