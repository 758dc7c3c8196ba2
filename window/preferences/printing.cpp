#include "window/preferences/printing.h"

#include "press/job/print.h"
#include "window/dialogs/file_question.h"

namespace Window {

void print(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto file = askForFile({.title = "PRINT_TITLE",
                                .files = "PDF_FILES",
                                .folder = world.job.folder(),
                                .ending = "pdf",
                                .offered = texts("PRINTED_NAME").arg(world.job.stem(texts))},
                               texts, &world.window);
  if (!file) return;
  if (!world.preferences().mayPrint()) return world.messages.showFailure(texts("PRINT_REFUSED").toStdString());
  std::vector<std::string> notes;
  const auto task = [job = world.job.file(), &file, &notes, effects = world.session.effects()](
                        const RunProgress& progress) { notes = Press::printPdf(job, *file, effects, progress); };
  const QString title = texts("PRINT_TITLE");
  if (world.run(task, {title, texts("PRINTING").arg(world.job.name(texts))}, "PRINT_STOPPED"))
    world.messages.announce({title, texts("PRINT_DONE").arg(toQt(file->filename().u16string())), notes, *file});
}

}  // namespace Window
