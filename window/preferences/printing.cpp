#include "window/preferences/printing.h"

#include "files/temporary_folder.h"
#include "press/job/plan.h"
#include "press/job/print.h"
#include "window/dialogs/file_question.h"
#include "window/dialogs/print_question.h"

namespace Window {
namespace {

// Sees that the job can be printed, and asks for the printers meanwhile. False when it cannot be; the user knows why.
bool prepare(const ActionWorld& world, PrintQuestion& question) {
  const auto task = [&question, job = world.job.file(),
                     effects = world.session.effects()](const RunProgress& progress) {
    question.pages = Press::planPrint(job, effects).jobPages;
    try {
      question.printers = Press::systemPrinters();
    } catch (const Press::Error&) {
      // A PDF file can be printed to nevertheless.
    }
    if (!progress(1, 1)) throw Press::Stopped();
  };
  const Texts texts = world.texts();
  return world.run(task, {texts("PRINT_DIALOG"), texts("LOOKING_AT").arg(world.job.name(texts))}, "PRINT_STOPPED");
}

// Asks the plug-in once the user has chosen everything, since it may act on it: a print that is cancelled changes
// nothing. False when the plug-in refuses; the user is told.
bool mayPrint(const ActionWorld& world) {
  const bool isAllowed = world.preferences().mayPrint();
  if (!isAllowed) world.messages.showFailure(world.texts()("PRINT_REFUSED").toStdString());
  return isAllowed;
}

// Runs the task that prints the job.
bool runPrinting(const ActionWorld& world, const QString& title, const std::function<void(const RunProgress&)>& task) {
  const Texts texts = world.texts();
  return world.run(task, {title, texts("PRINTING").arg(world.job.name(texts))}, "PRINT_STOPPED");
}

void printToFile(const ActionWorld& world, const Press::PageRule& pages) {
  const Texts texts = world.texts();
  const auto file = askForFile({.title = "PRINT_TITLE",
                                .files = "PDF_FILES",
                                .folder = world.job.folder(),
                                .ending = "pdf",
                                .offered = texts("PRINTED_NAME").arg(world.job.stem(texts))},
                               texts, &world.window);
  if (!file || !mayPrint(world)) return;
  std::vector<std::string> notes;
  const auto task = [&, job = world.job.file(), effects = world.session.effects()](const RunProgress& progress) {
    notes = Press::printPdf(job, *file, effects, progress, pages);
  };
  const QString title = texts("PRINT_TITLE");
  if (runPrinting(world, title, task))
    world.messages.announce({title, texts("PRINT_DONE").arg(toQt(file->filename().u16string())), notes, *file});
}

// The progress of one of two parts of a task, each of which counts in its own units.
auto partOf(const RunProgress& whole, int part) {
  return [&whole, part](std::int64_t done, std::int64_t total) {
    constexpr int steps = 1000;
    return whole(part * steps + static_cast<int>(total > 0 ? done * steps / total : 0), 2 * steps);
  };
}

void printOnPaper(const ActionWorld& world, const PrintChoice& choice) {
  if (!mayPrint(world)) return;
  const Texts texts = world.texts();
  Press::PrinterJob job = *choice.printer;
  job.title = world.job.name(texts).toStdString();
  std::vector<std::string> notes;
  std::string name;
  const auto task = [&, file = world.job.file(), effects = world.session.effects()](const RunProgress& progress) {
    const Files::TemporaryFolder folder;
    const std::filesystem::path printed = folder.path() / "printed.pdf";
    notes = Press::printPdf(file, printed, effects, partOf(progress, 0), choice.pages);
    name = Press::sendToPrinter(printed, job, partOf(progress, 1));
  };
  const QString title = texts("PRINT_DIALOG");
  if (runPrinting(world, title, task))
    world.messages.announce(
        {title, texts("PRINT_SENT").arg(QString::fromStdString(job.printer), QString::fromStdString(name)), notes});
}

}  // namespace

void print(const ActionWorld& world) {
  PrintQuestion question;
  if (!prepare(world, question)) return;
  const auto choice = askHowToPrint(question, world.texts(), &world.window);
  if (!choice) return;
  choice->printer ? printOnPaper(world, *choice) : printToFile(world, choice->pages);
}

}  // namespace Window
