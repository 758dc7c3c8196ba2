#include "effect/watermark/editor_name_clashes.h"

namespace Kiln::XUL {

using namespace Effect;

// The selected entry is the edited record's own. Name clashes count only among downloaded watermarks, and only among
// the others.
void EditorNameClashes::ask(SubDialogEventArg& event) {
  const auto list = editor.watermarkList();
  if (!list) return;
  const WString name = names.name();
  const std::int32_t own = list->selectedIndex();
  const auto selected = list->selectedItem();
  const auto entries = list->data();
  bool isVetoed = false;
  for (std::int32_t i = 0; i < entries->count(); ++i) {
    const auto entry = entries->at(i);
    if (!isNew && i == own) continue;
    if (editor.host.services.translate(entry->text()).view() != name.view()) continue;
    if (selected && entry->isMarked() != selected->isMarked()) continue;

    // The entry will be replaced, and the following ones move up.
    if (!confirmOverwrite())
      isVetoed = true;
    else if (i < list->selectedIndex())
      list->select(list->selectedIndex() - 1);
  }
  if (!isVetoed) return;
  event.vetoClose();
  // The dialog stays open and nothing is replaced yet, so the next OK must find the record's own entry selected.
  if (list->selectedIndex() != own) list->select(own);
}

bool EditorNameClashes::confirmOverwrite() {
  overwriteConfirmed = false;
  const auto question = editor.dialog->openDialog(Address::overwrite);
  if (!question) return false;
  connect(*question->okSignal(), *this, &EditorNameClashes::onOverwriteOk);
  question->runModally();
  return overwriteConfirmed;
}

void EditorNameClashes::onOverwriteOk(SubDialogEventArg&) { overwriteConfirmed = true; }

}  // namespace Kiln::XUL
