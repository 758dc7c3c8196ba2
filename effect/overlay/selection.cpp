// Keeps the overlay selection valid: the selected entry and the files to print.
#include "effect/overlay/tab.h"
#include "effect/settings.h"
#include "effect/widget_state.h"
#include "formats/file_list.h"

#include <algorithm>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// Whether a path leads into the folder of user data, with either separator.
bool isUserData(std::u16string_view path) {
  constexpr std::u16string_view folder = u"local\\userdata\\";
  std::u16string uniform(path);
  std::replace(uniform.begin(), uniform.end(), u'/', u'\\');
  return uniform.find(folder) != uniform.npos;
}

// The index of the first matching item; -1 when there is none.
template <class Fits>
std::int32_t firstItem(ListData& items, const Fits& fits) {
  for (std::int32_t i = 0; i < items.count(); ++i)
    if (fits(*items.at(i))) return i;
  return -1;
}

}  // namespace

SmartPtr<ListItem> OverlayTab::selectedItem() const { return list ? list->selectedItem() : SmartPtr<ListItem>(); }

// The value of the selected entry; without a list, of the property.
std::u16string OverlayTab::selectedOverlay() const {
  const auto item = selectedItem();
  return item ? item->value().str() : host.propertyValue(Prop::overlaySel).str();
}

// The record of the selected entry; without a list, the one that the properties mean.
OverlayId OverlayTab::selectedRecord() const {
  if (const auto item = selectedItem()) return idOf(*item);
  return store ? store->idOf(selectedOverlay(), host.propertyValue(Prop::overlaySourceFileName).view()) : OverlayId();
}

void OverlayTab::OvlSelectionChange(ModelSelectionChange& change) {
  const std::u16string value = change.value.str();
  selectOverlayItem(value, host.propertyValue(Prop::overlaySourceFileName).view());
  showOverlayPicture();
  if (value == Value::multiple && (!store || store->count() == 0)) {
    if (store) store->checkComplete();  // else several overlays would be given up for a passing error
    return makeOvlValid();
  }
  if (value == Value::none) {
    withdrawOverlay();
  } else {
    offerOverlay(value);
    const WString before = host.propertyValue(Prop::overlaySourceFileName);
    validateOvlSourceFile(value);
    const WString source = host.propertyValue(Prop::overlaySourceFileName);
    // Another overlay of the file name may have been found instead of a missing file.
    if (source.view() != before.view() && !source.empty() && value != Value::multiple) {
      selectOverlayItem(value, source.view());
      showOverlayPicture();
    }
  }
  const auto item = selectedItem();
  if (!item) return;
  // The list has no entry of an overlay whose index could not be read; its name stays.
  const bool isMissing = value != Value::none && item->value().view() == Value::none && store && !store->isComplete();
  if (!isMissing) host.send({{Prop::overlayName, item->displayedText().view()}});
}

// Neither values nor labels are unique: overlays of several folders may share them. The file to print decides then; of
// several names of that file, the selected one stays, or else the last one shown is selected again.
void OverlayTab::selectOverlayItem(std::u16string_view value, std::u16string_view source) {
  if (!list) return;
  const auto items = list->data();
  const bool isFixed = value == Value::none || value == Value::multiple;
  const bool isDownloaded =
      !isFixed && isUserData(source) && settingFlag(*host.properties->configuration(), Setting::userDataSupport);
  const auto hasValue = [&](ListItem& item) { return item.value().view() == value; };
  const auto hasLabel = [&](ListItem& item) { return item.text().view() == value; };
  const auto canBe = [&](ListItem& item) { return !isDownloaded || item.isMarked(); };
  const auto isPrinted = [&](ListItem& item) { return store && store->pathOf(idOf(item)) == source; };
  const auto isExact = [&](ListItem& item) { return hasValue(item) && canBe(item) && isPrinted(item); };
  const WString lastShown = host.propertyValue(Prop::overlayName);

  const auto current = list->selectedItem();
  std::int32_t index = current && isExact(*current) ? list->selectedIndex() : -1;
  if (index < 0)
    index = firstItem(*items,
                      [&](ListItem& item) { return isExact(item) && item.displayedText().view() == lastShown.view(); });
  if (index < 0) index = firstItem(*items, isExact);
  if (index < 0)
    index = firstItem(*items, [&](ListItem& item) { return hasValue(item) && item.isMarked() == isDownloaded; });
  if (index < 0) index = firstItem(*items, [&](ListItem& item) { return hasValue(item) && canBe(item); });
  if (index < 0) index = firstItem(*items, [&](ListItem& item) { return hasLabel(item) && canBe(item); });
  list->select(std::max(index, 0));
}

void OverlayTab::withdrawOverlay() {
  disableIfThere(detailsButton);
  disableIfThere(deleteButton);
  if (layeringBox) layeringBox->setEnabled(false);
  if (perPageBox) perPageBox->setEnabled(false);
  host.send({{Prop::overlaySel, Value::none},
             {Prop::overlayOccurance, Value::none},
             {Prop::overlayLayering, Value::underlay}});
}

void OverlayTab::makeOvlValid() {
  host.send({{Prop::overlaySel, Value::none},
             {Prop::overlayImage, Value::none},
             {Prop::multipleOverlayDetails, {}},
             {Prop::overlayOccurance, Value::none},
             {Prop::overlayLayering, Value::underlay}});
}

void OverlayTab::validateOvlSourceFile(std::u16string_view selection) {
  const WString source = host.propertyValue(Prop::overlaySourceFileName);
  std::u16string valid;
  if (selection == Value::multiple) {
    for (std::u16string_view rest = source.view(); !rest.empty();) {
      const FileListEntry entry = takeFirst(rest);
      // A ";" in a path divides it. Such a list cannot be checked; the print side says so.
      if (entry.pages.find_first_of(u"/\\") != entry.pages.npos) return;
      if (const std::u16string file = presentOverlayFile(entry.file); !file.empty()) append(valid, file, entry.pages);
    }
  } else {
    valid = presentOverlayFile(source.view());
  }
  if (valid != source.view()) host.send({{Prop::overlaySourceFileName, valid}});
}

// The file if it exists, else the store's file with that name, the selected overlay's first, else empty. Throws
// Exception when it cannot be determined whether there is one.
std::u16string OverlayTab::presentOverlayFile(std::u16string_view file) const {
  if (file.empty()) return {};
  const auto isThere = [this](std::u16string_view path) {
    const auto found = host.services.path(path);
    return found->exists() && !found->isFolder();
  };
  if (isThere(file)) return std::u16string(file);
  const auto item = selectedItem();
  if (item && store && item->value().view() == lastPartOf(file))
    if (const std::u16string path = store->pathOf(idOf(*item)); path != Value::none && isThere(path)) return path;
  const bool isDownloaded = isUserData(file) || (item && item->isMarked());
  for (const bool flag : {isDownloaded, !isDownloaded}) {
    const std::u16string path = store ? store->pathOf(lastPartOf(file), flag) : std::u16string(Value::none);
    if (path != Value::none && isThere(path)) return path;
  }
  if (store) store->checkComplete();
  return {};
}

}  // namespace Kiln::XUL
