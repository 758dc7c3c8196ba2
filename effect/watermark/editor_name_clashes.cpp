#include "effect/watermark/editor_name_clashes.h"

#include <algorithm>

namespace Kiln::XUL {

using namespace Effect;

void EditorNameClashes::ask(SubDialogEventArg& event) {
  asked.clear();
  agreed.clear();
  declined = false;
  const WString name = fieldText(*editor.record, Field::stylename);
  const auto list = editor.watermarkList();
  const std::int32_t own = list ? list->selectedIndex() : -1;
  if (list) askAboutEntries(*list, name, own);
  askAboutOthers(name);
  if (!declined) return;
  agreed.clear();
  event.vetoClose();
  // The dialog stays open and nothing is replaced yet, so the next OK must find the record's own entry selected.
  if (list && list->selectedIndex() != own) list->select(own);
}

// The selected entry is the edited record's own. Downloaded entries are never replaced.
void EditorNameClashes::askAboutEntries(ListBox& list, WStringView name, std::int32_t own) {
  const auto entries = list.data();
  for (std::int32_t i = 0; i < entries->count(); ++i) {
    const auto entry = entries->at(i);
    const bool isOwn = !isNew && i == own;
    if (isOwn) asked.push_back(entry->value().str());
    if (isOwn || entry->isMarked() || editor.host.services.translate(entry->text()).view() != name.view()) continue;

    // The entry will be replaced, and the following ones move up.
    if (askAbout(entry->value().view(), name) && i < list.selectedIndex()) list.select(list.selectedIndex() - 1);
  }
}

// The store may have taken up watermarks of another process that the list does not show yet.
void EditorNameClashes::askAboutOthers(WStringView name) {
  if (!idsOfName) return;
  for (const std::u16string& id : idsOfName(name))
    if (std::find(asked.begin(), asked.end(), id) == asked.end()) askAbout(id, name);
}

bool EditorNameClashes::askAbout(std::u16string_view id, WStringView name) {
  asked.emplace_back(id);
  const bool isAgreed = confirmOverwrite(name);
  if (isAgreed)
    agreed.emplace_back(id);
  else
    declined = true;
  return isAgreed;
}

bool EditorNameClashes::confirmOverwrite(WStringView name) {
  overwriteConfirmed = false;
  const auto question = editor.dialog->openDialog(Address::overwrite);
  if (!question) return false;
  if (const auto shownName = smartCast<Label>(question->widgetById(WidgetId::overwrittenName))) {
    shownName->setLabel(name);
    shownName->setVisible(true);
  }
  connect(*question->okSignal(), *this, &EditorNameClashes::onOverwriteOk);
  question->runModally();
  return overwriteConfirmed;
}

void EditorNameClashes::onOverwriteOk(SubDialogEventArg&) { overwriteConfirmed = true; }

}  // namespace Kiln::XUL
