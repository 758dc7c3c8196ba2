#include "window/preferences/ticket_actions.h"

#include "files/disk.h"
#include "files/whole_file.h"
#include "window/dialogs/file_question.h"

namespace Window {

void openTicket(const ActionWorld& world) {
  const FileQuestion question{.title = "OPEN_TICKET_TITLE", .files = "TICKET_FILES"};
  if (const auto file = askForFile(question, world.texts(), &world.window)) world.preferences().loadTicketFile(*file);
}

void saveTicket(const ActionWorld& world) {
  const FileQuestion question{.title = "SAVE_TICKET_TITLE", .files = "TICKET_FILES", .ending = "xml"};
  const auto file = askForFile(question, world.texts(), &world.window);
  if (!file) return;
  Files::sweepBeside(Files::realDisk(), *file);
  Files::replaceWhole(Files::realDisk(), *file, world.preferences().ticket());
}

}  // namespace Window
