// The watermark side of the tab: the list of watermarks, its buttons, and how often the selected one is printed.
//
// tab.cpp displays and selects, changes.cpp adds, edits and deletes.
#pragma once

#include "effect/tab_host.h"
#include "effect/watermark/watermarks.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kiln::XUL {

class WatermarkTab final : public SignalTarget {
 public:
  // `lender` outlives the object.
  explicit WatermarkTab(const TabHost& lender);

  void alignIn(const SmartPtr<Widget>& container) { leftBox->bind(container); }
  void setupWM();

  void WMSelectionChange(ModelSelectionChange& change);
  void FirstPageSelectionChange(ModelSelectionChange& change);
  void WMOccuranceSelectionChange(ModelSelectionChange& change);
  void DisableWM(ModelEnableChange& change);
  void DisableWMFirstPageOnly(ModelEnableChange& change);
  void DisableWMOccurance(ModelEnableChange& change);
  void onWMFirstPage(EventArg<Toggle> event);
  void onWMPerPage(EventArg<Toggle> event);
  void onWMChange(EventArg<ListBox> event);
  void onAddWM(EventArg<Button> event);
  void onEditWM(EventArg<Button> event);
  void onDeleteWM(EventArg<Button> event);
  void onOkWMDelete(SubDialogEventArg& event);

  // Writes all watermarks into the folder.
  void exportWatermarks(Services::Path& folder) const;

  // Reads the files again, after an import, and shows what they hold.
  void takeUpWatermarks();

 private:
  // Display and selection.
  SmartPtr<Watermarks> openedStore();
  void bindWidgets();
  void showWatermarks();
  std::u16string knownWatermark(std::u16string_view id) const;
  void offerWatermarks();
  void withdrawWatermarks();
  void selectWatermark(std::u16string_view id);
  void showSelection(std::u16string_view id);
  void showCurrent();

  // Changes.
  std::optional<std::vector<std::u16string>> editWatermark(const Watermarks& target, const Effect::Node& edited,
                                                           bool isNew);
  void removeItems(const std::vector<std::u16string>& ids);
  void refreshList();

  const TabHost& host;
  SmartPtr<Alignment> leftBox;
  SmartPtr<Watermarks> store;  // empty before the tab is set up, and after an import without memory for it

  // Each empty without a tab, or when the layout has no such widget.
  SmartPtr<ListBox> list;
  SmartPtr<Button> addButton;
  SmartPtr<Button> editButton;
  SmartPtr<Button> deleteButton;
  SmartPtr<Toggle> firstPageBox;
  SmartPtr<Toggle> perPageBox;
  SmartPtr<Widget> caption;
};

}  // namespace Kiln::XUL
