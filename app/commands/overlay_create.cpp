// kiln overlay create: makes an overlay of a PDF's page or of a picture through the plug-in, as in the preferences.
#include "app/commands/commands.h"
#include "app/messages.h"
#include "app/password_file.h"
#include "app/silent_run.h"
#include "formats/names.h"
#include "formats/papers.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/overlay_job.h"
#include "host/overlay_names.h"
#include "press/job/capture.h"
#include "press/job/form_file.h"

#include <memory>

namespace App {
namespace {

struct CreationOptions {
  SettingOptions settings;
  std::string name;
  std::string in;
  std::string passwordFile;
  int page = 1;
  bool fillsPaper = false;
  bool replaces = false;
};

// Accepts the preferences of a job that creates an overlay with the name: the plug-in prepares the destination.
void prepare(SilentRun& run, const CreationOptions& given) {
  const std::u16string name = Formats::toUtf16(given.name);
  if (Refhost::isReserved(name, Refhost::reservedOverlayNames(run.preferences().chrome())))
    throw std::runtime_error(Refhost::reservedNameSentence(name));
  std::string refusal = Formats::sentence("An overlay needs a name.");
  run.face().jobStep = name;
  run.face().operateDialogs([&](Refhost::Dialog& dialog) {
    const bool isFull = dialog.url().ends_with(u"/dlg_overlayfull.xul");
    refusal = isFull ? Formats::sentence("There is no room for more than 20 overlays; delete one first.")
                     : Formats::sentence("There is an overlay {1} already; --replace replaces it.",
                                         Formats::quoted(given.name));
    if (given.replaces && !isFull) dialog.accept();
  });
  try {
    run.accept();
  } catch (const NotAccepted&) {
    throw std::runtime_error(refusal);
  }
}

Press::PicturePage picturePage(const CreationOptions& given, const std::map<std::string, std::string>& values) {
  const auto paper = values.find(Formats::toUtf8(Formats::Prop::paperSize));
  return {Formats::paperOf(paper == values.end() ? u"" : Formats::toUtf16(paper->second)), given.fillsPaper};
}

Press::Capture captured(const CreationOptions& given, const std::map<std::string, std::string>& values) {
  const Press::FormFile form(toPath(given.in), picturePage(given, values));
  if (form.isPicture() && given.page != 1)
    throw std::runtime_error(Formats::sentence("{1} has no page {2}: choose one from 1 to {3}.",
                                               Press::quoted(toPath(given.in)), given.page, 1));
  try {
    return Press::captureOverlay({form.pdf(), passwordIn(given.passwordFile)}, Press::effectsFromProperties(values),
                                 given.page);
  } catch (const Press::Error& error) {
    throw std::runtime_error(inWordsOfCommands(error));
  }
}

int create(const CreationOptions& given) {
  const Interruption interruption;
  const Opening opening(given.settings, interruption);
  Refhost::Options options = opening.options();
  options.properties.emplace_back(Formats::Prop::printJob, Formats::Value::overlayJob);
  SilentRun run(options);
  given.settings.makeIn(run);
  given.settings.warn(run);
  // Captured before the destination is prepared, since the job may print on the overlay that it replaces.
  const Press::Capture capture = captured(given, run.printedValues());
  prepare(run, given);
  Refhost::writeOverlay(run.preferences(), {capture.pdf, capture.thumbnail});
  for (const std::string& note : capture.notes) tell(note);
  return 0;
}

}  // namespace

void addOverlayCreation(CLI::App& overlay, Run& run) {
  const auto given = std::make_shared<CreationOptions>();
  CLI::App& part =
      *overlay.add_subcommand("create", Formats::sentence("Makes an overlay of a PDF's page, or of a picture"));
  part.add_option("NAME", given->name, Formats::sentence("The overlay's name"))->required()->type_name("");
  part.add_option("FILE", given->in, Formats::sentence("The form: a PDF, or a JPEG or PNG picture"))
      ->required()
      ->type_name("");
  part.add_option("--page", given->page, Formats::sentence("The page of the PDF; by default the first"))
      ->type_name("N")
      ->check(CLI::Range(1, 1000'000).description(""));
  part.add_flag("--fill", given->fillsPaper,
                Formats::sentence("Makes a picture as large as the paper, instead of its own size"));
  part.add_flag("--replace", given->replaces, Formats::sentence("Replaces an overlay of that name"));
  addPasswordFile(part, given->passwordFile);
  given->settings.declare(part);
  part.callback([&run, given] { run = [given] { return create(*given); }; });
}

}  // namespace App
