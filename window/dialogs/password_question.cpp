#include "window/dialogs/password_question.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Window {
namespace {

constexpr int passwordWidth = 280;  // pixels

QLabel* addSentence(QVBoxLayout& column, const QString& text) {
  auto* sentence = new QLabel(text);
  sentence->setTextFormat(Qt::PlainText);
  sentence->setWordWrap(true);
  column.addWidget(sentence);
  return sentence;
}

}  // namespace

std::optional<std::string> askForPassword(const QString& jobName, bool wasWrong, const Texts& texts, QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName("password");
  dialog.setWindowTitle(texts("PASSWORD_TITLE"));
  auto* column = new QVBoxLayout(&dialog);
  addSentence(*column, texts("PASSWORD_QUESTION").arg(plainText(jobName)));
  if (wasWrong) addSentence(*column, texts("PASSWORD_WRONG"))->setObjectName("wrongPassword");
  auto* line = new QLineEdit;
  line->setEchoMode(QLineEdit::Password);
  line->setMinimumWidth(passwordWidth);
  auto* form = new QFormLayout;
  form->addRow(texts("PASSWORD"), line);
  column->addLayout(form);
  auto* buttons = new QDialogButtonBox;
  QPushButton* open = buttons->addButton(texts("OPEN_BUTTON"), QDialogButtonBox::AcceptRole);
  open->setDefault(true);
  open->setEnabled(false);
  buttons->addButton(texts("CANCEL"), QDialogButtonBox::RejectRole);
  column->addWidget(buttons);
  QObject::connect(line, &QLineEdit::textChanged, open,
                   [open](const QString& text) { open->setEnabled(!text.isEmpty()); });
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  if (dialog.exec() != QDialog::Accepted) return {};
  return line->text().toStdString();
}

}  // namespace Window
