#include "window/dialogs/destructive_question.h"

#include "window/dialogs/plain_labels.h"

#include <QMessageBox>
#include <QPushButton>

namespace Window {

bool askToGoOn(const DestructiveQuestion& question, const Texts& texts, QWidget* parent) {
  QMessageBox box(QMessageBox::Question, question.title, plainText(question.sentence), QMessageBox::NoButton, parent);
  showPlain(box);
  const QPushButton* go = box.addButton(question.verb, QMessageBox::AcceptRole);
  QPushButton* cancel = box.addButton(texts("CANCEL"), QMessageBox::RejectRole);
  box.setDefaultButton(cancel);
  box.setEscapeButton(cancel);
  box.exec();
  return box.clickedButton() == go;
}

}  // namespace Window
