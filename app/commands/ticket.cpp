#include "app/commands/commands.h"
#include "app/silent_run.h"
#include "formats/sentences.h"

#include <iostream>
#include <memory>

namespace App {
namespace {

constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln ticket --set MirrorImage=MirrorImage > mirrored.xml
  kiln print letter.pdf printed.pdf --ticket mirrored.xml
  kiln ticket --watermark Confidential > /etc/kiln/office.xml
  kiln ticket --capabilities --model kvt

Exit status: 0 when the document was written, 1 when a setting cannot be made,
2 when the preferences cannot be opened or the command line is wrong.)");

struct TicketOptions {
  SettingOptions settings;
  bool capabilities = false;
};

int ticket(const TicketOptions& given) {
  const Interruption interruption;
  const Opening opening(given.settings, interruption);
  SilentRun run(opening.options());
  given.settings.makeIn(run);
  given.settings.warn(run);
  std::cout << (given.capabilities ? run.preferences().capabilities() : run.preferences().ticket());
  return 0;
}

}  // namespace

void addTicket(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<TicketOptions>();
  CLI::App& command = *kiln.add_subcommand("ticket", Formats::sentence("Writes the settings as a PrintTicket"));
  command.footer(Formats::sentence(footer));
  command.add_flag("--capabilities", given->capabilities, Formats::sentence("Writes the PrintCapabilities instead"));
  given->settings.declare(command);
  command.callback([&run, given] { run = [given] { return ticket(*given); }; });
}

}  // namespace App
