#include "window/dialogs/file_question.h"

#include <QFileDialog>

namespace Window {

std::optional<std::filesystem::path> askForFile(const FileQuestion& question, const Texts& texts, QWidget* parent) {
  const bool isToWrite = !question.ending.isEmpty();
  QFileDialog dialog(parent, texts(question.title), question.folder, texts(question.files));
  dialog.setAcceptMode(isToWrite ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(isToWrite ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setLabelText(QFileDialog::Accept, texts(isToWrite ? "SAVE" : "OPEN_BUTTON"));
  if (isToWrite) dialog.setDefaultSuffix(question.ending);
  if (!question.offered.isEmpty()) dialog.selectFile(question.offered);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdU16String();
}

}  // namespace Window
