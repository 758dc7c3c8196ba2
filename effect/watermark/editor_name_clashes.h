// Asks whether other watermarks may be replaced, when the edited one is accepted with their name.
#pragma once

#include "effect/watermark/editor_context.h"
#include "effect/watermark/editor_names.h"

namespace Kiln::XUL {

class EditorNameClashes final : public SignalTarget {
 public:
  EditorNameClashes(const EditorContext& shared, const EditorNames& editedNames, bool isNewRecord)
      : editor(shared),
        names(editedNames),
        isNew(isNewRecord) {}

  // Keeps the dialog open when the user declines.
  void ask(SubDialogEventArg& event);

 private:
  void onOverwriteOk(SubDialogEventArg& event);
  bool confirmOverwrite();

  const EditorContext& editor;
  const EditorNames& names;
  const bool isNew;
  bool overwriteConfirmed = false;
};

}  // namespace Kiln::XUL
