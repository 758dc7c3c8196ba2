// kiln overlay create: makes an overlay of a PDF's first page through the plug-in, as in the preferences.
#include "app/commands/commands.h"
#include "app/messages.h"
#include "app/password_file.h"
#include "app/silent_run.h"
#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/overlay_job.h"
#include "press/job/capture.h"

#include <memory>

namespace App {
namespace {

struct CreationOptions {
  SettingOptions settings;
  std::string name;
  std::string in;
  std::string passwordFile;
  bool replaces = false;
};

// Accepts the preferences of a job that creates an overlay with the name: the plug-in prepares the destination.
void prepare(SilentRun& run, const CreationOptions& given) {
  std::string refusal = Formats::sentence("An overlay needs a name.");
  run.face().jobStep = Formats::toUtf16(given.name);
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

Press::Capture captured(const CreationOptions& given, SilentRun& run) {
  try {
    return Press::captureOverlay({toPath(given.in), passwordIn(given.passwordFile)},
                                 Press::effectsFromProperties(run.printedValues()));
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
  // Captured before the destination is prepared, since the job may print on the overlay that it replaces.
  const Press::Capture capture = captured(given, run);
  prepare(run, given);
  Refhost::writeOverlay(run.preferences(), {capture.pdf, capture.thumbnail});
  for (const std::string& note : capture.notes) tell(note);
  return 0;
}

}  // namespace

void addOverlayCreation(CLI::App& overlay, Run& run) {
  const auto given = std::make_shared<CreationOptions>();
  CLI::App& part = *overlay.add_subcommand("create", Formats::sentence("Makes an overlay of the first page of a PDF"));
  part.add_option("NAME", given->name, Formats::sentence("The overlay's name"))->required()->type_name("");
  part.add_option("FILE.pdf", given->in, Formats::sentence("The form"))->required()->type_name("");
  part.add_flag("--replace", given->replaces, Formats::sentence("Replaces an overlay of that name"));
  addPasswordFile(part, given->passwordFile);
  given->settings.declare(part);
  part.callback([&run, given] { run = [given] { return create(*given); }; });
}

}  // namespace App
