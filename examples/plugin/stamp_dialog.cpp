#include "stamp_dialog.h"

namespace Stamp {

using namespace Kiln;
using namespace Kiln::XUL;

std::optional<std::u16string> StampDialog::ask(GUI& gui, const std::u16string& proposed) {
  dialog = gui.openDialog(u"chrome://stamp/content/dlg_stamp.xul");
  if (!dialog) return {};  // the host has told why
  box = smartCast<TextBox>(dialog->widgetById(u"txt_stamp"));
  if (!box) throw Exception(allocator, "The dialog of the stamp has no text box txt_stamp.");
  box->setMaximumLength(40);
  connect(*box->typingSignal(), *this, &StampDialog::onTyping);
  connect(*box->pastingSignal(), *this, &StampDialog::onTyping);
  connect(*dialog->okSignal(), *this, &StampDialog::onOk);
  box->setText(proposed);  // fires the typing signal
  dialog->okButton()->setEnabled(!proposed.empty());
  dialog->runModally();
  return accepted;
}

// There is nothing to accept without a text.
void StampDialog::onTyping(SmartPtr<TextChangeEventArg> change) {
  if (!change->isProvisional()) dialog->okButton()->setEnabled(!change->text().empty());
}

void StampDialog::onOk(SubDialogEventArg&) { accepted = box->text().str(); }

}  // namespace Stamp
