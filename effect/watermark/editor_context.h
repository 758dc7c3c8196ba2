// What the parts of the watermark editor share: the dialog, its preview, and the record that it edits.
#pragma once

#include "effect/tab_host.h"
#include "effect/watermark/record.h"

namespace Kiln::XUL {

struct EditorContext {
  TabHost host;
  Effect::Node record;          // the caller's copy; every change is written into it immediately
  SmartPtr<SubDialog> dialog;   // empty when its layout cannot be loaded
  SmartPtr<WMPreview> preview;  // empty when the layout has none

  // The dialog's widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(Effect::Name id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }

  // The tab's list of watermarks; empty when the tab has none.
  SmartPtr<ListBox> watermarkList() const {
    return smartCast<ListBox>(dialog->parentWidgetById(Effect::WidgetId::watermarkList));
  }

  void setEnabled(Effect::Name id, bool enabled) const {
    if (const auto found = dialog->widgetById(id)) enabled ? found->enable() : found->disable();
  }
};

}  // namespace Kiln::XUL
