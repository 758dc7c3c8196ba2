// User actions in the window, apart from the tabs.
#include "host/unicode.h"
#include "press/job/print.h"
#include "window/background_run.h"
#include "window/file_question.h"
#include "window/page_panel.h"
#include "window/preferences_window.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>

#include <map>

namespace Window {

// Exceptions must not propagate through Qt.
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

bool PreferencesWindow::isSample() const {
  return sampleFolder.isValid() && document.parent_path() == sampleFolder.path().toStdU16String();
}

QString PreferencesWindow::nameOfJob() {
  return isSample() ? texts()("SAMPLE") : toQt(document.filename().u16string());
}

// File dialogs start in the job's folder, or for the sample job in the user's documents.
QString PreferencesWindow::folderOfJob() const {
  return isSample() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                    : toQt(std::filesystem::absolute(document).parent_path().u16string());
}

void PreferencesWindow::openDocument() {
  const FileQuestion question{.title = "OPEN_TITLE", .files = "PDF_FILES", .folder = folderOfJob()};
  if (const auto file = askForFile(question, texts(), this)) {
    pages->goTo(1);
    setDocument(*file);
  }
}

// Whether the plug-in would accept OK now; printing a job has the same condition.
bool PreferencesWindow::isAccepted() {
  bool accepted = false;
  preferences().dispatch([&] { accepted = preferences().gui()->panel().firePreAccept(); });
  return accepted;
}

void PreferencesWindow::print() {
  const QString stem = isSample() ? texts()("SAMPLE") : toQt(document.stem().u16string());
  const auto file = askForFile({.title = "PRINT_TITLE",
                                .files = "PDF_FILES",
                                .folder = folderOfJob(),
                                .ending = "pdf",
                                .offered = texts()("PRINTED_NAME").arg(stem)},
                               texts(), this);
  if (!file) return;
  if (!isAccepted()) return showFailure(texts()("PRINT_REFUSED").toStdString());
  std::vector<std::string> notes;
  const auto task = [this, &file, &notes, effects = effects()](const RunProgress& progress) {
    notes = Press::printPdf(document, *file, effects, progress);
  };
  const QString title = texts()("PRINT_TITLE");
  const RunResult result = runWithProgress(task, {title, texts()("PRINTING").arg(nameOfJob())}, texts(), this);
  switch (result.end) {
    case RunEnd::done:
      return announce({title, texts()("PRINT_DONE").arg(toQt(file->filename().u16string())), notes, *file});
    case RunEnd::stopped: return announce({title, texts()("PRINT_STOPPED")});
    case RunEnd::failed: return showFailure(result.failure.toStdString());
  }
}

// The message box is modeless.
void PreferencesWindow::announce(const News& news) {
  auto* box = new QMessageBox(QMessageBox::Information, news.title, news.sentence, QMessageBox::NoButton, this);
  box->setTextFormat(Qt::PlainText);
  QStringList notes;
  for (const std::string& note : news.notes) notes << QString::fromStdString(note);
  box->setInformativeText(notes.join('\n'));
  QPushButton* ok = box->addButton(texts()("OK"), QMessageBox::AcceptRole);
  box->setDefaultButton(ok);
  box->setEscapeButton(ok);
  if (!news.file.empty()) {
    QPushButton* show = box->addButton(texts()("SHOW_FILE"), QMessageBox::ActionRole);
    connect(show, &QPushButton::clicked, this,
            [file = news.file] { QDesktopServices::openUrl(QUrl::fromLocalFile(toQt(file.u16string()))); });
  }
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

// False when the preferences were not accepted. Accepting destroys their widgets, so the window must close; failures to
// save the settings are reported before.
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

// Asks what to do with changed settings when the window is closed by its frame or the menu.
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

// Shows the window's help when the plug-in has none for the tab.
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
