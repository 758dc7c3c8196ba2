// The dialog that assigns up to eight overlays to the pages of the document: two master slots for all, even or odd
// pages, and six for lists of pages.
//
// The properties change only when the user accepts, in one transition. multi_overlay_source.h has the overlays to
// choose from, multi_overlay_slots.h the slots.
#pragma once

#include "effect/overlay/multi_overlay_context.h"
#include "effect/overlay/multi_overlay_slots.h"
#include "effect/overlay/multi_overlay_source.h"
#include "kiln/property.h"

#include <string_view>

namespace Kiln::XUL {

class MultiOverlayDlg final : public SignalTarget {
 public:
  // The dialog's environment; all of it outlives the dialog.
  struct DialogHost {
    Host& services;
    PropertyManager properties;
    SmartPtr<Overlays> store;
  };

  // Loads the dialog over the preferences, whose tab has the list of overlays, and shows the saved values. Widgets that
  // the layout does not have are skipped.
  MultiOverlayDlg(DialogHost lender, GUI& preferences);

  // Returns when the dialog has closed. A layout that cannot be loaded counts as cancelled.
  void run();

 private:
  using Text = std::u16string_view;

  void onOk(SubDialogEventArg& event);
  void onCancel(SubDialogEventArg& event);
  void onHelp(EventArg<Button> event);
  void onRestoreDefaults(EventArg<Button> event);
  void connectWidgets();
  void withdrawFirstChoice();

  // Loads the saved values, or the defaults, into the slots.
  void show(Text details);
  void restoreDefaults();
  Effect::OverlayId overlayFor(Text label, Text pages, Text& savedFiles) const;
  bool isThere(Text label) const;

  PropertyManager properties;
  MultiOverlayContext shared;

  // The parts; they refer to `shared`.
  MultiOverlaySource source;
  MultiOverlaySlots slots;
};

}  // namespace Kiln::XUL
