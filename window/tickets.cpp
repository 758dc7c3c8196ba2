// PrintTickets opened and saved from the window's menu.
#include "host/documents/disk.h"
#include "host/documents/whole_file.h"
#include "host/unicode.h"
#include "window/preferences_window.h"

#include <QFileDialog>

namespace Window {

std::optional<std::filesystem::path> PreferencesWindow::askForTicket(bool forSaving) {
  QFileDialog dialog(this, texts()(forSaving ? "SAVE_TICKET_TITLE" : "OPEN_TICKET_TITLE"), QString(),
                     texts()("TICKET_FILES"));
  dialog.setAcceptMode(forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setLabelText(QFileDialog::Accept, texts()(forSaving ? "SAVE" : "OPEN_BUTTON"));
  if (forSaving) dialog.setDefaultSuffix("xml");
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdU16String();
}

void PreferencesWindow::openTicket() {
  const auto file = askForTicket(false);
  if (!file) return;
  preferences().loadTicketFile(*file);
}

void PreferencesWindow::saveTicket() {
  if (const auto file = askForTicket(true)) Refhost::replaceWhole(Refhost::realDisk(), *file, preferences().ticket());
}

}  // namespace Window
