#include "app/silent_run.h"

#include "app/choices.h"
#include "app/failure.h"
#include "app/marks.h"
#include "app/system/user.h"
#include "files/path_text.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/profiles/archive.h"

namespace App {

namespace {

void takeKept(Refhost::Options& options) {
  const auto kept = keptIn(options.home, options, tell);
  if (kept)
    options.properties = *kept;
  else
    tell(Formats::sentence("No settings are kept in {1} for this model: accept them in \"kiln show\" first.",
                           Files::shownPath(options.home)));
}

}  // namespace

SilentRun::SilentRun(const Refhost::Options& options, Tell tellUser) : silent(tellUser), opened(options, silent) {
  try {
    opened.open();
    check();
  } catch (const std::exception& error) {
    throw Failure(cannotOpen, error.what());
  }
}

void SilentRun::check() {
  silent.check();
  if (const std::string& unread = opened.unread(); !unread.empty()) throw std::runtime_error(unread);
}

void SilentRun::takeTicket(const std::filesystem::path& file) {
  try {
    opened.loadTicketFile(file);
  } catch (const std::runtime_error& error) {
    const std::string sentence = error.what();
    const bool isAboutItsContent = sentence.starts_with(Files::shownPath(file) + ':');
    if (!isAboutItsContent) throw;
    throw std::runtime_error(
        Formats::sentence("{1}; write the ticket anew with \"kiln ticket\".", withoutStop(sentence)));
  }
  check();
}

void SilentRun::choose(const Refhost::TracePairs& choices) {
  App::choose(opened, silent, choices);
  check();
}

void SilentRun::act(const std::function<void()>& atWidgets, const std::function<void(Refhost::Dialog&)>& inDialogs) {
  silent.operateDialogs(inDialogs);
  atWidgets();
  silent.operateDialogs({});
  check();
}

std::map<std::string, std::string> SilentRun::accept() {
  const bool isAccepted = opened.accept();
  check();
  if (!isAccepted) throw NotAccepted(Formats::sentence("The plug-in does not accept these settings."));
  return printedValues();
}

std::map<std::string, std::string> SilentRun::printedValues() {
  std::map<std::string, std::string> values;
  for (const auto& [name, value] : opened.model().printedValues())
    values.emplace(Formats::toUtf8(name), Formats::toUtf8(value));
  return values;
}

void SettingOptions::declare(CLI::App& command) {
  const CLI::Validator isNamed = notEmpty(Formats::sentence("a file has to be named"));
  CLI::Option* const profileOption =
      command
          .add_option(
              "--profile", profile,
              Formats::sentence("Opens with a profile's model, settings, watermarks and overlays, not the home's"))
          ->type_name("FILE")
          ->check(isNamed);
  command
      .add_flag("--settings", takesKept,
                Formats::sentence("Opens with the settings that OK in \"kiln show\" has kept in the home"))
      ->excludes(profileOption);
  command.add_option("--ticket", ticket, Formats::sentence("Then takes the settings of a PrintTicket"))
      ->type_name("FILE")
      ->check(isNamed);
  command
      .add_option_function<std::string>(
          "--watermark", [this](const std::string& name) { watermark = name; },
          Formats::sentence("Then chooses the watermark of this name, as the preferences list it"))
      ->type_name("NAME");
  addRepeatable(
      command, "--overlay", overlays,
      Formats::sentence("Then the overlay of this name, on all pages or on Even, Odd, 1,3,5-9; may be repeated"))
      ->type_name("NAME[:PAGES]");
  addRepeatable(command, "--set", settings,
                Formats::sentence("Then a setting, MirrorImage=MirrorImage for example; may be repeated"))
      ->type_name("NAME=VALUE");
  host.declare(command,
               Formats::sentence("The folder for what a user keeps; by default the one that \"kiln show\" uses"));
}

void SettingOptions::makeIn(SilentRun& run) const {
  if (!ticket.empty()) run.takeTicket(toPath(ticket));
  if (watermark) chooseWatermark(run, *watermark);
  chooseOverlays(run, overlays);
  run.choose(toPairs("--set", settings));
}

void SettingOptions::warn(SilentRun& run) const { warnOfMissingWatermark(run, toPairs("--set", settings)); }

Opening::Opening(const SettingOptions& given, const Interruption& interruption) : resolved(given.host.resolve()) {
  if (given.profile.empty()) {
    if (resolved.home.empty()) resolved.home = userFolder();
    if (given.takesKept) takeKept(resolved);
    return;
  }
  try {
    const auto model = given.host.model.empty() ? ProfileHome::Model::ofProfile : ProfileHome::Model::ofOptions;
    profile.emplace(toPath(given.profile), resolved, model, interruption);
  } catch (const Refhost::Stopped&) {
    throw Failure(128 + interruption.signal(), Formats::sentence("Reading {1} was stopped.", given.profile));
  }
}

}  // namespace App
