// Profile export and import from the window's menu.
#include "host/profiles/profile.h"
#include "window/background_run.h"
#include "window/file_question.h"
#include "window/page_panel.h"
#include "window/preferences_window.h"

#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace Window {

void PreferencesWindow::addProfileEntries(QMenu& menu) {
  menu.addSeparator();
  addEntry(menu, "EXPORT_PROFILE", {}, &PreferencesWindow::exportProfile);
  addEntry(menu, "IMPORT_PROFILE", {}, &PreferencesWindow::importProfile);
}

void PreferencesWindow::exportProfile() {
  const QString title = texts()("EXPORT_TITLE");
  QMessageBox question(QMessageBox::Question, title, texts()("EXPORT_QUESTION"), QMessageBox::NoButton, this);
  auto* userData = new QCheckBox(texts()("INCLUDE_USER_DATA"), &question);
  userData->setChecked(true);
  question.setCheckBox(userData);
  QPushButton* go = question.addButton(texts()("EXPORT_BUTTON"), QMessageBox::AcceptRole);
  question.setEscapeButton(question.addButton(texts()("CANCEL"), QMessageBox::RejectRole));
  question.setDefaultButton(go);
  question.exec();
  if (question.clickedButton() != go) return;

  const auto file = askForFile(
      {.title = "EXPORT_TITLE", .files = "PROFILE_FILES", .ending = "zip", .offered = texts()("PROFILE_NAME")}, texts(),
      this);
  if (!file) return;
  const Refhost::ProfileExport profile(preferences(), userData->isChecked() ? Refhost::UserData::included
                                                                            : Refhost::UserData::leftOut);
  const QString name = toQt(file->filename().u16string());
  const RunResult result = runWithProgress([&](const RunProgress& progress) { profile.pack(*file, progress); },
                                           {title, texts()("EXPORTING").arg(name)}, texts(), this);
  switch (result.end) {
    case RunEnd::done: return announce({title, texts()("EXPORT_DONE").arg(name)});
    case RunEnd::stopped: return announce({title, texts()("EXPORT_STOPPED")});
    case RunEnd::failed: return showFailure(result.failure.toStdString());
  }
}

void PreferencesWindow::importProfile() {
  const auto file = askForFile({.title = "IMPORT_TITLE", .files = "PROFILE_FILES"}, texts(), this);
  if (!file) return;
  const QString title = texts()("IMPORT_TITLE");
  const QString name = toQt(file->filename().u16string());
  Refhost::Manifest profile;
  const auto task = [&profile, &file, home = Refhost::ProfileHome::of(preferences())](const RunProgress& progress) {
    profile = Refhost::importProfile(Refhost::realDisk(), *file, home, progress);
  };
  const RunResult result = runWithProgress(task, {title, texts()("IMPORTING").arg(name)}, texts(), this);
  switch (result.end) {
    case RunEnd::done:
      preferences().importProfile({}, profile.values);
      pages->redraw();
      return announce({title, texts()("IMPORT_DONE").arg(name)});
    case RunEnd::stopped: return announce({title, texts()("IMPORT_STOPPED")});
    case RunEnd::failed: return showFailure(result.failure.toStdString());
  }
}

}  // namespace Window
