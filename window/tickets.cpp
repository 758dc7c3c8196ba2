// Opening and saving PrintTickets from the window's menu.
#include "host/documents/disk.h"
#include "host/documents/whole_file.h"
#include "window/file_question.h"
#include "window/preferences_window.h"

namespace Window {

void PreferencesWindow::openTicket() {
  if (const auto file = askForFile({.title = "OPEN_TICKET_TITLE", .files = "TICKET_FILES"}, texts(), this))
    preferences().loadTicketFile(*file);
}

void PreferencesWindow::saveTicket() {
  const FileQuestion question{.title = "SAVE_TICKET_TITLE", .files = "TICKET_FILES", .ending = "xml"};
  if (const auto file = askForFile(question, texts(), this))
    Refhost::replaceWhole(Refhost::realDisk(), *file, preferences().ticket());
}

}  // namespace Window
