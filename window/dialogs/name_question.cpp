#include "window/dialogs/name_question.h"

#include <QCompleter>
#include <QInputDialog>
#include <QLineEdit>

namespace Window {
namespace {

// The width for a name, in pixels.
constexpr int nameWidth = 320;

}  // namespace

std::optional<QString> askForName(const NameQuestion& question, QWidget* parent) {
  QInputDialog dialog(parent);
  dialog.setWindowTitle(question.title);
  dialog.setLabelText(question.label);
  auto* completer = new QCompleter(question.offered, &dialog);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  dialog.setTextValue({});  // creates the line edit for the completer
  auto* line = dialog.findChild<QLineEdit*>();
  line->setCompleter(completer);
  line->setMinimumWidth(nameWidth);
  const bool isGiven = dialog.exec() == QDialog::Accepted;
  return isGiven ? std::optional(dialog.textValue()) : std::nullopt;
}

}  // namespace Window
