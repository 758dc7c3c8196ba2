// The overlay side of the tab: the list of overlays, the picture of the selected one, and how it is printed.
//
// tab.cpp displays and handles signals, selection.cpp keeps the selection valid.
#pragma once

#include "effect/overlay/overlays.h"
#include "effect/tab_host.h"

#include <string>
#include <string_view>

namespace Kiln::XUL {

class OverlayTab final : public SignalTarget {
 public:
  // `lender` outlives the object.
  explicit OverlayTab(const TabHost& lender);

  void alignIn(const SmartPtr<Widget>& container) { leftBox->bind(container); }
  void setupOverlay();

  // The store; opened on the first call.
  Overlays& overlays() { return *openedStore(); }

  void OvlSelectionChange(ModelSelectionChange& change);
  void OvlOccuranceSelectionChange(ModelSelectionChange& change);
  void OvlLayeringSelectionChange(ModelSelectionChange& change);
  void DisableOvl(ModelEnableChange& change);
  void DisableOvlOccurance(ModelEnableChange& change);
  void DisableOvlLayering(ModelEnableChange& change);
  void onOvlChange(EventArg<ComboBox> event);
  void onOvlDetails(EventArg<Button> event);
  void onOvlDelete(EventArg<Button> event);
  void onOkOvlDelete(SubDialogEventArg& event);
  void onOvlOverlay(EventArg<Toggle> event);
  void onOvlPerPage(EventArg<Toggle> event);

  // Turns the overlay off when the selection is invalid.
  void makeOvlValid();

  // Replaces the missing files in OverlaySourceFileName by the store's, or removes them.
  void validateOvlSourceFile(std::u16string_view selection);

  // Updates the controls for the overlay that is selected in the list.
  void updateOvlControls();

  // Copies all overlays into a folder inside `location`.
  void exportOverlays(Services::Path& location) const;

  // Reads the files again, after an import, and shows what they hold.
  void takeUpOverlays();

 private:
  // Display.
  void bindWidgets();
  void showOverlays();
  void showDownloadedTip();
  void showOverlayPicture();
  void offerOverlay(std::u16string_view value);

  SmartPtr<Overlays> openedStore();

  // Runs the dialog for several overlays; returns when it has closed.
  void assignOverlays();

  // Selection.
  SmartPtr<ListItem> selectedItem() const;
  std::u16string selectedOverlay() const;
  Effect::OverlayId selectedRecord() const;
  void selectOverlayItem(std::u16string_view value, std::u16string_view source);
  void withdrawOverlay();
  std::u16string presentOverlayFile(std::u16string_view file) const;

  const TabHost& host;
  SmartPtr<Alignment> leftBox;
  SmartPtr<Overlays> store;  // empty until first needed, or when an import ran out of memory

  // Each empty without a tab, or when the layout has no such widget.
  SmartPtr<ComboBox> list;
  SmartPtr<Button> detailsButton;
  SmartPtr<Button> deleteButton;
  SmartPtr<Toggle> layeringBox;
  SmartPtr<Toggle> perPageBox;
  SmartPtr<ImageBox> picture;
  SmartPtr<Label> caption;

  Effect::OverlayId asked;  // the overlay that the question before a deletion is about

  SmartPtr<Image> tip;  // the icon of downloaded data; empty when the tab does not mark it
};

}  // namespace Kiln::XUL
