#include "press/print.h"
#include "app/commands.h"
#include "app/failure.h"
#include "app/interruption.h"
#include "app/progress_line.h"
#include "app/silent_run.h"
#include "host/unicode.h"

#include <map>
#include <memory>

namespace App {
namespace {

constexpr const char* footer =
    R"(Settings go through the plug-in and the model's rules, as if they were clicked in the preferences.

Examples:
  kiln print letter.pdf printed.pdf --set MirrorImage=MirrorImage
  kiln print report.pdf printed.pdf --model kvt --set NegativeImage=Negative --set Rotate180=Rotate180

Exit status: 0 when OUT.pdf was written, 1 when it was not, and stays as it was, 2 when the preferences
cannot be opened or the command line is wrong, 130 when it was stopped by Ctrl-C.)";

struct PrintOptions {
  SettingOptions settings;
  std::string in;
  std::string out;
};

// The values with which the job prints, after the preferences were accepted.
std::map<std::string, std::string> printedValues(const PrintOptions& given) {
  const auto run = openWithSettings(given.settings);
  const bool isAccepted = run->preferences.accept();
  run->face.check();
  if (!isAccepted) throw std::runtime_error("The plug-in does not accept these settings.");
  std::map<std::string, std::string> values;
  for (const auto& [name, value] : run->preferences.model().printedValues())
    values.emplace(Refhost::toNarrow(name), Refhost::toNarrow(value));
  return values;
}

int print(const PrintOptions& given) {
  const Press::Effects effects = Press::effectsFromProperties(printedValues(given));
  const Interruption interruption;
  try {
    ProgressLine line;
    Press::printPdf(toPath(given.in), toPath(given.out), effects, [&](int done, int total) {
      line.show(done, total);
      return interruption.signal() == 0;
    });
  } catch (const Press::Cancelled&) {
    throw Failure(128 + interruption.signal(), "Printing was stopped; " + given.out + " is as it was.");
  }
  return 0;
}

}  // namespace

void addPrint(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<PrintOptions>();
  CLI::App& command = *kiln.add_subcommand("print", "Prints a PDF with chosen effects into another PDF");
  command.footer(footer);
  command.add_option("IN.pdf", given->in, "The job")->required()->type_name("");
  command.add_option("OUT.pdf", given->out, "The printed pages; an existing file is replaced")
      ->required()
      ->type_name("");
  given->settings.declare(command);
  command.callback([&run, given] { run = [given] { return print(*given); }; });
}

}  // namespace App
