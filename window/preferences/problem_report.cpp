#include "window/preferences/problem_report.h"

#include "files/whole_file.h"
#include "script/report.h"
#include "window/dialogs/file_question.h"
#include "window/dialogs/report_question.h"

namespace Window {

void reportProblem(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto report = [&world](bool includesTexts) {
    const auto kind = includesTexts ? Script::UserTexts::included : Script::UserTexts::replaced;
    return QString::fromStdString(Script::reportOf(world.recording, world.preferences().model(), kind));
  };
  const auto text = askToReport(report, texts, &world.window);
  if (!text) return;
  const auto file =
      askForFile({.title = "REPORT_TITLE", .files = "REPORT_FILES", .ending = "drive", .offered = texts("REPORT_NAME")},
                 texts, &world.window);
  if (!file) return;
  Files::sweepBeside(Files::realDisk(), *file);
  Files::replaceWhole(Files::realDisk(), *file, text->toStdString());
  world.messages.announce({texts("REPORT_TITLE"), texts("REPORT_DONE").arg(toQt(file->filename().u16string()))});
}

}  // namespace Window
