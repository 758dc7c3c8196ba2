// The dialog that assigns up to eight overlays to the pages of the document: two master slots for all, even or odd
// pages, and six for lists of pages.
//
// The properties change only when the user accepts, in one transition.
#pragma once

#include "effect/overlay/multiple_overlay_details.h"
#include "effect/overlay/overlays.h"
#include "effect/overlay/ovl_thumbnail.h"
#include "kiln/gui.h"
#include "kiln/host.h"
#include "kiln/property.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Kiln::XUL {

class MultiOverlayDlg final : public SignalTarget {
 public:
  // The dialog's environment; all of it outlives the dialog.
  struct DialogHost {
    Host& services;
    PropertyManager properties;
    const Overlays& store;
  };

  // Loads the dialog over the preferences, whose tab has the list of overlays, and shows the saved values. Widgets that
  // the layout does not have are skipped.
  MultiOverlayDlg(DialogHost lender, GUI& preferences);

  // Returns when the dialog has closed. A layout that cannot be loaded counts as cancelled.
  void run();

 private:
  using Text = std::u16string_view;

  // The dialog.
  void onOk(SubDialogEventArg& event);
  void onCancel(SubDialogEventArg& event);
  void onHelp(EventArg<Button> event);
  void withdrawFirstChoice();
  void connectWidgets();
  template <std::size_t... slot>
  void connectSlots(std::index_sequence<slot...>);

  // The overlays to choose from. The default overlay is empty when the tab's list has none.
  void fillSource();
  void onSourceChange(EventArg<ListBox> event);
  void refreshButtons();
  SmartPtr<ListItem> sourceItem(Text value);
  SmartPtr<ListItem> defaultOverlay();
  std::u16string pathOf(Text label, bool isDownloaded);
  SmartPtr<Image> thumbnail(Text label, bool isDownloaded);

  // Loads the saved values, or the defaults, into the slots.
  void show(Text details);
  void restoreDefaults();
  void selectInSource(ListItem& overlay);
  void onRestoreDefaults(EventArg<Button> event);
  bool isThere(Text label);
  bool isOnlyDownloaded(Text label);

  // Filling a slot.
  void onAdd(EventArg<Button> event);
  void onAddManual(EventArg<Button> event);
  void addToFirstFree(std::size_t from, std::size_t to);
  template <std::size_t slot>
  void onDrop(WString value);
  void dropOn(std::size_t slot, Text value);
  void place(std::size_t slot, Text label, bool isDownloaded, Text pages);

  // The pages of a slot.
  void onRule(EventArg<Toggle> event);
  template <std::size_t slot>
  void onPages(SmartPtr<TextChangeEventArg> change);
  void takePages(std::size_t slot, TextChangeEventArg& change);
  void showPages(std::size_t slot);
  void keepMastersApart();

  // Clearing slots.
  void onClear(EventArg<Button> event);
  template <std::size_t slot>
  void onMenu(WString item);
  void clear(std::size_t slot);
  void clearAll();

  // The text box with the slot's list of pages; empty for a master.
  SmartPtr<TextBox> pagesBox(std::size_t slot) const;

  // The dialog's widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(Effect::Name id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }

  DialogHost host;
  SmartPtr<SubDialog> dialog;  // empty when its layout cannot be loaded
  SmartPtr<ListBox> source;
  std::array<OvlThumbnail, Effect::slotCount> slots;
};

}  // namespace Kiln::XUL
