#include "press/job/print.h"
#include "app/commands/commands.h"
#include "app/dry_run.h"
#include "app/failure.h"
#include "app/messages.h"
#include "app/password_file.h"
#include "app/printer_options.h"
#include "app/progress_line.h"
#include "app/silent_run.h"
#include "app/system/interruption.h"
#include "app/system/standard_files.h"
#include "app/watermark_look.h"
#include "formats/names.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/kept_settings.h"

#include <iostream>
#include <memory>
#include <optional>

namespace App {
namespace {

constexpr std::string_view footer = Formats::sentenceTemplate(
    R"(Settings go through the plug-in and the model's rules, as if they were clicked in the preferences. )"
    R"("-" as IN.pdf or
OUT.pdf stands for standard input or output. Pages of overlays are counted among those that are printed.

Examples:
  kiln print letter.pdf printed.pdf --set MirrorImage=MirrorImage
  kiln print letter.pdf printed.pdf --watermark Draft --pages 1,3,5-
  kiln print letter.pdf printed.pdf --watermark-text "For review" --watermark-colour "#FF0000"
  kiln print letter.pdf printed.pdf --settings
  kiln print letter.pdf --overlay Letterhead:1 --overlay Continuation:2- --dry-run
  kiln print letter.pdf --printer office --copies 2 --sides two-sided-long-edge
  kiln print locked.pdf printed.pdf --password-file secret.txt
  make-report | kiln print - - --watermark Confidential | lp
  kiln print report.pdf printed.pdf --model kvt --set NegativeImage=Negative --set Rotate180=Rotate180

Exit status: 0 when OUT.pdf was written or the printer has the job, 1 when it was not, and OUT.pdf stays as it was,
2 when the preferences cannot be opened or the command line is wrong, 130 when it was stopped by Ctrl-C.)");

struct PrintOptions {
  SettingOptions settings;
  std::optional<std::string> watermarkText;
  WatermarkLook look;
  PrinterOptions printing;
  std::string in;
  std::string out;
  std::string passwordFile;
  std::string pages = "All";
  bool isDryRun = false;

  bool isForPrinter() const { return !printing.printer.empty(); }
};

// How to print a job.
struct Wanted {
  Press::Effects effects;
  Press::PageRule pages;
  std::string password;
  std::optional<Press::PrinterJob> printer;
};

// Says that the home keeps effects, where nothing shows that these are not printed.
void tellOfKept(const SettingOptions& given, const Refhost::Options& options) {
  if (given.takesKept || !given.profile.empty() || !given.ticket.empty()) return;
  const Refhost::ModelDescription model = Refhost::readModel(options.resources / "models", options.model);
  Press::Properties kept;
  for (const auto& [name, value] : Refhost::peekAtSettings(Refhost::settingsFile(options.home, model.name)))
    kept[Formats::toUtf8(name)] = Formats::toUtf8(value);
  if (Press::effectsFromProperties(kept).any())
    App::tell(
        Formats::sentence("The effects that \"kiln show\" has kept are not printed: --settings prints with them."));
}

// A watermark for this job alone, with the look of the one that is chosen otherwise.
void setWatermark(const PrintOptions& given, SilentRun& run) {
  if (!given.watermarkText) {
    if (given.look.isGiven())
      throw Failure(wrongUsage,
                    Formats::sentence("The look of a watermark belongs to --watermark-text TEXT, which there is not."));
    return;
  }
  demandWatermarkText(*given.watermarkText);
  given.look.demandValid();
  const bool isBlackAlone = !run.preferences().model().allows(Formats::Prop::watermarkColor, u"Non-Black");
  if (given.look.colour && isBlackAlone)
    throw std::runtime_error(
        Formats::sentence("This model does not print watermarks in colours of choice; leave out --watermark-colour."));
  Refhost::TracePairs wanted = given.look.properties();
  wanted.insert(wanted.begin(),
                {{std::u16string(Formats::Prop::watermark), std::u16string(Formats::Value::watermark)},
                 {std::u16string(Formats::Prop::watermarkText), Formats::toUtf16(*given.watermarkText)}});
  run.choose(wanted);
}

Wanted wantedBy(const PrintOptions& given, const Opening& opening) {
  Wanted wanted;
  wanted.pages = Press::PageRule(given.pages);
  wanted.password = passwordIn(given.passwordFile);
  SilentRun run(opening.options());
  given.settings.makeIn(run);
  setWatermark(given, run);
  given.settings.warn(run);
  wanted.effects = Press::effectsFromProperties(run.accept());
  tellOfKept(given.settings, opening.options());
  return wanted;
}

void tell(const Wanted& wanted, const StandardFiles& files) {
  const Press::Plan plan = Press::planPrint({files.in(), wanted.password}, wanted.effects, wanted.pages);
  for (const std::string& sentence : describe(plan, wanted.effects)) std::cout << sentence << '\n';
}

void send(const Press::PrinterJob& job, const StandardFiles& files, const Interruption& interruption) {
  ProgressLine line(Formats::sentenceTemplate("Sending: {1} %"));
  const auto progress = [&](std::int64_t done, std::int64_t total) {
    constexpr std::int64_t unit = 1024;
    line.show(static_cast<int>(done / unit), static_cast<int>(total / unit) + 1);
    return interruption.signal() == 0;
  };
  std::cout << Formats::printable(Press::sendToPrinter(files.out(), job, progress)) << '\n';
}

void print(const Wanted& wanted, const StandardFiles& files, const Interruption& interruption) {
  std::vector<std::string> notes;
  {
    ProgressLine line(Formats::sentenceTemplate("Printing: {1} of {2} pages"));
    const auto progress = [&](int done, int total) {
      line.show(done, total);
      return interruption.signal() == 0;
    };
    const Press::JobFile job(files.in(), wanted.password);
    notes = Press::printPdf(job, files.out(), wanted.effects, progress, wanted.pages);
  }
  for (const std::string& note : notes) App::tell(note);
  wanted.printer ? send(*wanted.printer, files, interruption) : files.deliver();
}

void demandOneTarget(const PrintOptions& given) {
  if (given.isForPrinter() && !given.out.empty())
    throw Failure(wrongUsage,
                  Formats::sentence("OUT.pdf and --printer are two targets: name one; see \"kiln print --help\"."));
  if (given.out.empty() && !given.isForPrinter() && !given.isDryRun)
    throw Failure(wrongUsage, Formats::sentence("OUT.pdf is required; see \"kiln print --help\"."));
  if (given.out == "-" && !given.isDryRun) demandNoTerminal();
}

// What the job is called in the queue.
std::string titleOf(const PrintOptions& given) {
  return given.in == "-" ? Formats::sentence("Standard input") : Press::utf8(toPath(given.in).filename());
}

void printOrTell(const PrintOptions& given, const Interruption& interruption) {
  const Opening opening(given.settings, interruption);
  Wanted wanted = wantedBy(given, opening);
  if (given.isForPrinter() && !given.isDryRun) wanted.printer = given.printing.resolve(titleOf(given));
  const StandardFiles files(given.in, given.isForPrinter() ? "-" : given.out, interruption,
                            given.isForPrinter() ? Formats::sentence("The print for the printer")
                                                 : Formats::sentence("Standard output"));
  files.receive();
  try {
    given.isDryRun ? tell(wanted, files) : print(wanted, files, interruption);
  } catch (const Press::Error& error) {
    throw std::runtime_error(files.inUsersWords(inWordsOfCommands(error)));
  }
}

int run(const PrintOptions& given) {
  demandOneTarget(given);
  const Interruption interruption;
  try {
    printOrTell(given, interruption);
    return 0;
  } catch (const Press::Stopped&) {
    const bool hasOutput = given.out != "-" && !given.isForPrinter() && !given.isDryRun;
    throw Failure(128 + interruption.signal(),
                  hasOutput ? Formats::sentence("Printing was stopped; {1} is as it was.", given.out)
                            : Formats::sentence("Printing was stopped."));
  }
}

}  // namespace

void addPrint(CLI::App& kiln, Run& chosen) {
  const auto given = std::make_shared<PrintOptions>();
  CLI::App& command =
      *kiln.add_subcommand("print", Formats::sentence("Prints a PDF with chosen effects into another PDF"));
  command.footer(Formats::sentence(footer));
  command.add_option("IN.pdf", given->in, Formats::sentence("The job"))->required()->type_name("");
  command
      .add_option("OUT.pdf", given->out,
                  Formats::sentence("The printed pages; an existing file is replaced. Not with --printer or --dry-run"))
      ->type_name("");
  command
      .add_option("--pages", given->pages,
                  Formats::sentence("Only these pages: All, Even, Odd, or a list such as 1,3,5-9,12-"))
      ->type_name("PAGES")
      ->capture_default_str();
  command.add_flag("--dry-run", given->isDryRun,
                   Formats::sentence("Says what would be done to which pages, and prints nothing"));
  addPasswordFile(command, given->passwordFile);
  given->printing.declare(command);
  command
      .add_option_function<std::string>(
          "--watermark-text", [given](const std::string& text) { given->watermarkText = text; },
          Formats::sentence("Prints this text as a watermark, on this job alone"))
      ->type_name("TEXT");
  given->look.declare(command, "--watermark-");
  given->settings.declare(command);
  command.callback([&chosen, given] { chosen = [given] { return run(*given); }; });
}

}  // namespace App
