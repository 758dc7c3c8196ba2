// The dialogs of the window and of the plug-in, one after the other.
#pragma once

#include "press/job/sample.h"
#include "tests/window/answers.h"
#include "window/dialogs/password_question.h"

#include <fstream>
#include <string>

namespace Testing {

// `look` gets each dialog with a name for it, and closes it.
inline void openEveryDialog(OpenWindow& open, Answers& answers,
                            const std::function<void(QWidget&, const std::string& name)>& look) {
  const auto given = [&look](const std::string& name) {
    return [&look, name](QWidget& dialog) { look(dialog, name); };
  };
  for (const char* entry : {"PRINT", "REPORT", "EXPORT_PROFILE", "PRINT_OVERLAY", "PRESET_SAVE"})
    answers.choose(entry, {given(entry)});
  for (const char* opener : {"btn_WMAdd", "but_EffDet"}) answers.press(opener, given(opener));
  auto& gui = *open.window->preferences().gui();
  for (const std::string question :
       {"effect/content/dlg_overlayfull", "base/content/dlg_overwrite", "base/content/dlg_confirmdelete"}) {
    const std::u16string address = Formats::toUtf16("chrome://" + question + ".xul");
    answers.during([&] { gui.openDialog(address)->runModally(); }, {given(question.substr(question.rfind('/') + 1))});
  }
  const QString form = open.home.filePath("form.pdf");
  std::ofstream(form.toStdString(), std::ios::binary) << Press::samplePdf();
  answers.during([&] { open.find<QPushButton>("newOverlayButton").click(); }, {file(form), given("new-overlay")});
  const Window::Texts texts(open.window->preferences().strings());
  answers.during([&] { Window::askForPassword("job.pdf", true, texts, open.window.get()); }, {given("password")});
}

}  // namespace Testing
