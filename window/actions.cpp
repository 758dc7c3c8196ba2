// What the user does in the window, besides the tabs.
#include "host/unicode.h"
#include "window/page_panel.h"
#include "window/preferences_window.h"
#include "window/print_run.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>

#include <map>

namespace Window {

// Nothing that goes wrong passes through Qt.
void PreferencesWindow::guarded(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    showFailure(error.what());
  }
}

Press::Effects PreferencesWindow::effects() {
  std::map<std::string, std::string> values;
  for (const auto& [name, value] : preferences().model().printedValues())
    values[Refhost::toNarrow(name)] = Refhost::toNarrow(value);
  return Press::effectsFromProperties(values);
}

void PreferencesWindow::openDocument() {
  if (const auto file = askForFile(false)) {
    pages->goTo(1);
    setDocument(*file);
  }
}

// The name that is offered for printing stands beside the job, or, for the sample job, in the user's documents.
std::optional<std::filesystem::path> PreferencesWindow::askForFile(bool forPrinting) {
  const bool isSample = document.parent_path() == sampleFolder.path().toStdU16String();
  const QString folder = isSample ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                                  : toQt(std::filesystem::absolute(document).parent_path().u16string());
  QFileDialog dialog(this, texts()(forPrinting ? "PRINT_TITLE" : "OPEN_TITLE"), folder, texts()("PDF_FILES"));
  dialog.setAcceptMode(forPrinting ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(forPrinting ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setLabelText(QFileDialog::Accept, texts()(forPrinting ? "SAVE" : "OPEN_BUTTON"));
  if (forPrinting) {
    const QString stem = isSample ? texts()("SAMPLE") : toQt(document.stem().u16string());
    dialog.setDefaultSuffix("pdf");
    dialog.selectFile(texts()("PRINTED_NAME").arg(stem));
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdU16String();
}

// Whether the plug-in would let the user press OK now: a job prints under the same condition.
bool PreferencesWindow::isAccepted() {
  bool accepted = false;
  preferences().dispatch([&] { accepted = preferences().gui()->panel().firePreAccept(); });
  return accepted;
}

void PreferencesWindow::print() {
  const auto file = askForFile(true);
  if (!file) return;
  if (!isAccepted()) return showFailure(texts()("PRINT_REFUSED").toStdString());
  const PrintResult result = printWithProgress(document, *file, effects(), texts(), this);
  switch (result.end) {
    case PrintEnd::done: return tellPrinted(texts()("PRINT_DONE").arg(toQt(file->filename().u16string())), *file);
    case PrintEnd::stopped: return tellPrinted(texts()("PRINT_STOPPED"), {});
    case PrintEnd::failed: return showFailure(result.failure.toStdString());
  }
}

void PreferencesWindow::tellPrinted(const QString& sentence, const std::filesystem::path& file) {
  auto* box = new QMessageBox(QMessageBox::Information, texts()("PRINT_TITLE"), sentence, QMessageBox::NoButton, this);
  box->setDefaultButton(box->addButton(texts()("OK"), QMessageBox::AcceptRole));
  if (!file.empty()) {
    QPushButton* show = box->addButton(texts()("SHOW_FILE"), QMessageBox::ActionRole);
    connect(show, &QPushButton::clicked, this,
            [file] { QDesktopServices::openUrl(QUrl::fromLocalFile(toQt(file.u16string()))); });
  }
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

// False when the preferences were not accepted. Once they are their widgets are gone, and the window has to go too;
// settings that cannot be kept are told of before.
bool PreferencesWindow::keep() {
  bool accepted = false;
  try {
    accepted = session.keep();
  } catch (const std::exception& error) {
    accepted = true;
    QMessageBox box(QMessageBox::Warning, texts()("TITLE"), error.what(), QMessageBox::NoButton, this);
    box.addButton(texts()("OK"), QMessageBox::AcceptRole);
    box.exec();
  }
  if (accepted) leaveTabs();
  return accepted;
}

void PreferencesWindow::discard() {
  leaveTabs();
  preferences().cancel();
}

void PreferencesWindow::accept() {
  if (keep()) close();
}

void PreferencesWindow::cancel() {
  discard();
  close();
}

void PreferencesWindow::closeEvent(QCloseEvent* event) {
  const bool isOver = preferences().gui() == nullptr;
  event->setAccepted(isOver || mayClose());
}

// Closing by the frame or the menu: what to do with changed settings is asked.
bool PreferencesWindow::mayClose() {
  if (!session.isChanged()) {
    discard();
    return true;
  }
  QMessageBox box(QMessageBox::Question, texts()("TITLE"), texts()("CLOSE_QUESTION"), QMessageBox::NoButton, this);
  QPushButton* keepButton = box.addButton(texts()("KEEP"), QMessageBox::AcceptRole);
  QPushButton* discardButton = box.addButton(texts()("DISCARD"), QMessageBox::DestructiveRole);
  box.setEscapeButton(box.addButton(texts()("CANCEL"), QMessageBox::RejectRole));
  box.setDefaultButton(keepButton);
  box.exec();
  if (box.clickedButton() == keepButton) return keep();
  if (box.clickedButton() != discardButton) return false;
  discard();
  return true;
}

void PreferencesWindow::undo() { preferences().undo(); }

void PreferencesWindow::restoreDefaults() { preferences().restoreDefaults(); }

// A tab that the plug-in has no help for gets the help on the window.
void PreferencesWindow::help() {
  helpShown = false;
  preferences().help();
  if (!helpShown) helpOnWindow();
}

void PreferencesWindow::helpOnWindow() {
  showHelp(
      toWide(
          QStringLiteral("chrome://window/content/%1/help/window.html").arg(QString::fromStdString(session.locale()))),
      u"");
}

}  // namespace Window
