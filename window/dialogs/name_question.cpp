#include "window/dialogs/name_question.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace Window {

std::optional<QString> askForName(const NameQuestion& question, QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName(question.topic);
  dialog.setWindowTitle(question.title);
  auto* label = new QLabel(question.label, &dialog);
  auto* field = new NameField(question.name, question.offered, question.judge, question.longest, &dialog);
  field->nameBy(*label);
  auto* column = new QVBoxLayout(&dialog);
  column->addWidget(label);
  column->addWidget(field);
  if (!question.note.isEmpty()) {
    auto* note = new QLabel(question.note, &dialog);
    note->setObjectName("note");
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    column->addWidget(note);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  for (QAbstractButton* button : buttons->buttons()) button->setIcon({});  // as in the plug-in's dialogs
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  const auto show = [ok, field] { ok->setEnabled(field->isAllowed()); };
  QObject::connect(field, &NameField::judged, &dialog, show);
  show();
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  column->addStretch();
  column->addWidget(buttons);
  field->setFocus();
  const bool isGiven = dialog.exec() == QDialog::Accepted;
  return isGiven ? std::optional(field->name()) : std::nullopt;
}

}  // namespace Window
