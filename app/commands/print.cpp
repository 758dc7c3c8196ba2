#include "press/job/print.h"
#include "app/commands/commands.h"
#include "app/dry_run.h"
#include "app/failure.h"
#include "app/messages.h"
#include "app/progress_line.h"
#include "app/silent_run.h"
#include "app/system/interruption.h"
#include "app/system/standard_files.h"
#include "formats/sentences.h"

#include <iostream>
#include <memory>

namespace App {
namespace {

constexpr std::string_view footer = Formats::sentenceTemplate(
    R"(Settings go through the plug-in and the model's rules, as if they were clicked in the preferences. )"
    R"("-" as IN.pdf or
OUT.pdf stands for standard input or output. Pages of overlays are counted among those that are printed.

Examples:
  kiln print letter.pdf printed.pdf --set MirrorImage=MirrorImage
  kiln print letter.pdf printed.pdf --watermark Draft --pages 1,3,5-
  kiln print letter.pdf --overlay Letterhead:1 --overlay Continuation:2- --dry-run
  make-report | kiln print - - --watermark Confidential | lp
  kiln print report.pdf printed.pdf --model kvt --set NegativeImage=Negative --set Rotate180=Rotate180

Exit status: 0 when OUT.pdf was written, 1 when it was not, and stays as it was, 2 when the preferences
cannot be opened or the command line is wrong, 130 when it was stopped by Ctrl-C.)");

struct PrintOptions {
  SettingOptions settings;
  std::string in;
  std::string out;
  std::string pages = "All";
  bool isDryRun = false;
};

// The settings to print a job with.
struct Wanted {
  Press::Effects effects;
  Press::PageRule pages;
};

Wanted wantedBy(const PrintOptions& given, const Opening& opening) {
  Wanted wanted;
  wanted.pages = Press::PageRule(given.pages);
  SilentRun run(opening.options());
  given.settings.makeIn(run);
  wanted.effects = Press::effectsFromProperties(run.accept());
  return wanted;
}

void tell(const Wanted& wanted, const StandardFiles& files) {
  const Press::Plan plan = Press::planPrint(files.in(), wanted.effects, wanted.pages);
  for (const std::string& sentence : describe(plan, wanted.effects)) std::cout << sentence << '\n';
}

void print(const Wanted& wanted, const StandardFiles& files, const Interruption& interruption) {
  std::vector<std::string> notes;
  {
    ProgressLine line(Formats::sentenceTemplate("Printing: {1} of {2} pages"));
    const auto progress = [&](int done, int total) {
      line.show(done, total);
      return interruption.signal() == 0;
    };
    notes = Press::printPdf(files.in(), files.out(), wanted.effects, progress, wanted.pages);
  }
  for (const std::string& note : notes) App::tell(note);
  files.deliver();
}

int run(const PrintOptions& given) {
  if (given.out.empty() && !given.isDryRun)
    throw Failure(wrongUsage, Formats::sentence("OUT.pdf is required; see \"kiln print --help\"."));
  const Interruption interruption;
  try {
    const Opening opening(given.settings, interruption);
    const Wanted wanted = wantedBy(given, opening);
    const StandardFiles files(given.in, given.out, interruption);
    files.receive();
    try {
      given.isDryRun ? tell(wanted, files) : print(wanted, files, interruption);
    } catch (const Press::Error& error) {
      throw std::runtime_error(files.inUsersWords(error.what()));
    }
    return 0;
  } catch (const Press::Stopped&) {
    const bool hasOutput = given.out != "-" && !given.isDryRun;
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
                  Formats::sentence("The printed pages; an existing file is replaced. Not with --dry-run"))
      ->type_name("");
  command
      .add_option("--pages", given->pages,
                  Formats::sentence("Only these pages: All, Even, Odd, or a list such as 1,3,5-9,12-"))
      ->type_name("PAGES")
      ->capture_default_str();
  command.add_flag("--dry-run", given->isDryRun,
                   Formats::sentence("Says what would be done to which pages, and prints nothing"));
  given->settings.declare(command);
  command.callback([&chosen, given] { chosen = [given] { return run(*given); }; });
}

}  // namespace App
