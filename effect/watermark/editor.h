// The watermark editor: the modal dialog that creates or edits one watermark, with a live preview.
//
// The record is the caller's copy; every change is written into it immediately. The caller stores it and replaces
// another record with its name.
//
// The dialog is one class, each group of its controls another: editor_names.h, editor_colour.h, editor_font.h,
// editor_placement.h and editor_print_style.h. editor_ranges.h has the values themselves.
#pragma once

#include "effect/watermark/editor_colour.h"
#include "effect/watermark/editor_context.h"
#include "effect/watermark/editor_font.h"
#include "effect/watermark/editor_name_clashes.h"
#include "effect/watermark/editor_names.h"
#include "effect/watermark/editor_placement.h"
#include "effect/watermark/editor_print_style.h"

namespace Kiln::XUL {

class WatermarkDlg final : public SignalTarget {
 public:
  // Loads the dialog over the preferences, whose tab has the list of watermarks, and shows the record; with a null
  // record the dialog shows nothing and can only be cancelled. The host catches what a handler throws, and the dialog
  // stays open.
  // `stored` tells of watermarks that the list may not show.
  WatermarkDlg(TabHost lender, SmartPtr<Dom::INode> edited, bool isNewRecord, IdsOfName stored = {});

  // Returns when the dialog has closed; at once when its layout could not be loaded.
  void run();

  // Whether the caller should store the record.
  bool isAccepted() const { return accepted; }

  // Whether the user's last answer was not to replace a watermark of the name.
  bool isReplacingDeclined() const { return clashes.isDeclined(); }

  // The ids of the watermarks that the record replaces, as the user has agreed.
  const std::vector<std::u16string>& replaced() const { return clashes.replaced(); }

 private:
  void onOk(SubDialogEventArg& event);
  void onCancel(SubDialogEventArg& event);
  void onRestoreDefaults(EventArg<Button> event);
  void connectWidgets();
  void load(const SmartPtr<Dom::INode>& source);

  EditorContext shared;

  // The parts; they refer to `shared`.
  EditorNames names;
  EditorColour colour;
  EditorFont font;
  EditorPlacement placement;
  EditorPrintStyle printStyle;
  EditorNameClashes clashes;

  bool accepted = false;
};

}  // namespace Kiln::XUL
