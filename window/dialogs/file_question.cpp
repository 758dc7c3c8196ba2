#include "window/dialogs/file_question.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QListView>
#include <QScreen>
#include <QTreeView>

namespace Window {
namespace {

// The toolkit's own dialog gives the facts of a file, and the places beside them, less room than they need.
void makeRoom(QFileDialog& dialog) {
  const QSize room = dialog.screen()->availableSize() * 0.9;
  if (auto* places = dialog.findChild<QListView*>("sidebar"); places != nullptr)
    places->setMinimumWidth(qMin(places->sizeHintForColumn(0) + 2 * places->frameWidth(), room.width() / 4));
  const auto* files = dialog.findChild<QTreeView*>("treeView");
  if (files == nullptr) return;  // the desktop's dialog
  QHeaderView& header = *files->header();
  header.setStretchLastSection(false);
  header.setSectionResizeMode(QHeaderView::ResizeToContents);
  header.setSectionResizeMode(0, QHeaderView::Stretch);
  dialog.resize(dialog.sizeHint().boundedTo(room));
}

}  // namespace

std::optional<std::filesystem::path> askForFile(const FileQuestion& question, const Texts& texts, QWidget* parent) {
  const bool isToWrite = !question.ending.isEmpty();
  QFileDialog dialog(parent, texts(question.title), question.folder, texts(question.files));
  dialog.setAcceptMode(isToWrite ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(isToWrite ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setLabelText(QFileDialog::Accept, texts(isToWrite ? "SAVE" : "OPEN_BUTTON"));
  if (isToWrite) dialog.setDefaultSuffix(question.ending);
  if (!question.offered.isEmpty()) dialog.selectFile(question.offered);
  makeRoom(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdU16String();
}

}  // namespace Window
