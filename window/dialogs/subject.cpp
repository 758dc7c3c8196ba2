#include "window/dialogs/subject.h"

#include "formats/names.h"
#include "host/widgets/list.h"
#include "window/language/texts.h"
#include "window/widgets/list_buttons.h"

namespace Window {
namespace {

// The selected entry of the list whose button for deleting is pressed.
QString entryToDelete(const Refhost::Gui& tabs, const Refhost::UserActions& actions) {
  const Refhost::UserAction* action = actions.innermost();
  if (action == nullptr || action->command != "click" || action->arguments.empty()) return {};
  const ListButtons* buttons = listOfDelete(action->arguments.front());
  auto* list = buttons == nullptr ? nullptr : dynamic_cast<Refhost::SelectorNode*>(tabs.find(buttons->list));
  if (list == nullptr) return {};
  const auto item = list->items().at(list->selection());
  return item ? toQt(item->displayedText().view()) : QString();
}

}  // namespace

QString subjectOf(Refhost::Dialog& dialog, const Refhost::Gui* tabs, const Refhost::UserActions& actions) {
  if (dialog.url() == Formats::Address::confirmDelete && tabs != nullptr) return entryToDelete(*tabs, actions);
  if (dialog.url() != Formats::Address::overwrite) return {};
  const Refhost::WidgetNode* own = dialog.layout().find(Formats::WidgetId::overwrittenName);
  const bool showsName = own != nullptr && own->isVisible();
  return showsName ? QString() : toQt(actions.latestName().value_or(std::u16string()));
}

}  // namespace Window
