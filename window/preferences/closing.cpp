#include "window/preferences/closing.h"

#include "window/dialogs/plain_labels.h"

#include <QMessageBox>
#include <QPushButton>

namespace Window {

bool Closing::keep() {
  bool accepted = false;
  try {
    accepted = session.keep();
  } catch (const std::exception& error) {
    accepted = true;
    const Texts texts = session.texts();
    QMessageBox box(QMessageBox::Warning, texts("TITLE"), plainText(error.what()), QMessageBox::NoButton, &window);
    showPlain(box);
    box.addButton(texts("OK"), QMessageBox::AcceptRole);
    box.exec();
  }
  if (accepted) tabs.leave();
  return accepted;
}

void Closing::discard() {
  tabs.leave();
  session.preferences().cancel();
}

bool Closing::keepOrDiscard() {
  if (!session.isChanged()) {
    discard();
    return true;
  }
  const Texts texts = session.texts();
  QMessageBox box(QMessageBox::Question, texts("TITLE"), texts("CLOSE_QUESTION"), QMessageBox::NoButton, &window);
  QPushButton* keepButton = box.addButton(texts("KEEP"), QMessageBox::AcceptRole);
  QPushButton* discardButton = box.addButton(texts("DISCARD"), QMessageBox::DestructiveRole);
  box.setEscapeButton(box.addButton(texts("CANCEL"), QMessageBox::RejectRole));
  box.setDefaultButton(keepButton);
  box.exec();
  if (box.clickedButton() == keepButton) return keep();
  if (box.clickedButton() != discardButton) return false;
  discard();
  return true;
}

}  // namespace Window
