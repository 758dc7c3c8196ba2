#include "app/silent_run.h"

#include "app/choices.h"
#include "app/failure.h"
#include "app/user.h"
#include "host/documents/xml.h"

namespace App {

void SettingOptions::declare(CLI::App& command) {
  addRepeatable(command, "--set", settings, "A setting, MirrorImage=MirrorImage for example; may be repeated")
      ->type_name("NAME=VALUE");
  command.add_option("--ticket", ticket, "Takes the settings of a PrintTicket first")->type_name("FILE");
  host.declare(command, "The folder for what a user keeps; by default the one that \"kiln show\" uses");
}

std::unique_ptr<SilentRun> openWithSettings(const SettingOptions& given) {
  constexpr std::size_t largestTicket = std::size_t{32} << 20;
  const Refhost::TracePairs choices = toPairs("--set", given.settings);
  Refhost::Options options = given.host.resolve();
  if (options.home.empty()) options.home = userFolder();
  auto run = std::make_unique<SilentRun>(options);
  try {
    run->preferences.open();
    run->face.check();
  } catch (const std::exception& error) {
    throw Failure(cannotOpen, error.what());
  }
  if (!given.ticket.empty()) {
    run->preferences.loadTicket(Refhost::readFile(toPath(given.ticket), largestTicket), given.ticket);
    run->face.check();
  }
  choose(run->preferences, run->face, choices);
  return run;
}

}  // namespace App
