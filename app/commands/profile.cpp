#include "host/profiles/profile.h"
#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/messages.h"
#include "app/progress_line.h"
#include "app/silent_run.h"
#include "app/system/interruption.h"
#include "app/system/user.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/kept_settings.h"

#include <memory>
#include <optional>

namespace App {
namespace {

constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln profile export settings.zip
  kiln profile import settings.zip --home /mnt/stick/kiln

Exit status: 0 when it was done, 1 when it was not, and file and home are as they were, 2 when the
preferences cannot be opened or the command line is wrong, 130 when it was stopped by Ctrl-C.)");

struct ProfileOptions {
  HostOptions host;
  std::string file;
  bool leavesOutUserData = false;

  // The model whose settings are imported; empty for the profile's own.
  std::string model;
};

Refhost::Options resolve(const ProfileOptions& given) {
  Refhost::Options options = given.host.resolve();
  if (options.home.empty()) options.home = userFolder();
  options.locale = userLocale(Refhost::ChromeFolders(options.resources).locales("effect"));
  return options;
}

// Runs an interruptible task. `doing` and `stopped` are templates of the progress line, and of the sentence that the
// task was stopped, in which `file` stands.
void runWithProgress(std::string_view doing, std::string_view stopped, const std::string& file,
                     const std::function<void(const Refhost::Progress&)>& task) {
  const Interruption interruption;
  try {
    ProgressLine line(doing);
    task([&](int done, int total) {
      line.show(done, total);
      return interruption.signal() == 0;
    });
  } catch (const Refhost::Stopped&) {
    throw Failure(128 + interruption.signal(), Formats::sentence(stopped, file));
  }
}

// Opens the preferences with the settings that the window has saved for the model.
std::unique_ptr<SilentRun> openAsKept(Refhost::Options options) {
  try {
    const auto model = Refhost::readModel(options.resources / "models", options.model);
    const auto kept = Refhost::readSettings(Refhost::settingsFile(options.home, model.name), tell);
    if (!kept.setAside.empty())
      tell(Formats::sentence("The settings were damaged; they are kept in {1}.", Files::shownPath(kept.setAside)));
    options.properties = Refhost::applicable(kept.values, model);
  } catch (const std::exception& error) {
    throw Failure(cannotOpen, error.what());
  }
  return std::make_unique<SilentRun>(options);
}

int exportProfile(const ProfileOptions& given) {
  const auto run = openAsKept(resolve(given));
  const auto userData = given.leavesOutUserData ? Refhost::UserData::leftOut : Refhost::UserData::included;
  std::optional<Refhost::ProfileExport> profile;
  run->act([&] { profile.emplace(run->preferences(), userData); });
  runWithProgress(Formats::sentenceTemplate("Packing: {1} %"),
                  Formats::sentenceTemplate("Packing was stopped; {1} is as it was."), given.file,
                  [&](const Refhost::Progress& progress) { profile->pack(toPath(given.file), progress); });
  return 0;
}

int importProfile(const ProfileOptions& given) {
  const Refhost::Options options = resolve(given);
  const Refhost::StringTables texts{Refhost::ChromeFolders(options.resources), options.locale};
  const auto home = std::filesystem::absolute(options.home).lexically_normal();
  Refhost::ProfileHome into = Refhost::ProfileHome::closed(home);
  into.translate = [&texts](std::u16string_view text) { return texts.resolve(text); };
  into.tell = tell;
  into.settingsFile = [&](const std::u16string& profileModel) {
    const bool isOther = !given.model.empty();
    return Refhost::settingsFile(home, isOther ? Refhost::readModel(options.resources / "models", given.model).name
                                               : profileModel);
  };
  runWithProgress(Formats::sentenceTemplate("Importing: {1} %"),
                  Formats::sentenceTemplate("Importing was stopped; the home is as it was."), {},
                  [&](const Refhost::Progress& progress) {
                    Refhost::importProfile(Files::realDisk(), toPath(given.file), into, progress);
                  });
  return 0;
}

}  // namespace

void addProfile(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<ProfileOptions>();
  CLI::App& command = *kiln.add_subcommand(
      "profile", Formats::sentence("Takes settings, watermarks and overlays elsewhere, in one file"));
  command.footer(Formats::sentence(footer));
  command.require_subcommand(1);
  const auto add = [&](const char* name, const std::string& help, int (*does)(const ProfileOptions&)) -> CLI::App& {
    CLI::App& part = *command.add_subcommand(name, help);
    part.add_option("FILE", given->file, Formats::sentence("The profile"))->required()->type_name("");
    part.callback([&run, given, does] { run = [given, does] { return does(*given); }; });
    return part;
  };
  CLI::App& out = add("export", Formats::sentence("Packs them into FILE, which is replaced"), exportProfile);
  out.add_flag("--no-user-data", given->leavesOutUserData, Formats::sentence("Leaves out the watermarks and overlays"));
  given->host.declare(
      out, Formats::sentence("The folder for what a user keeps; by default the one that \"kiln show\" uses"));
  CLI::App& in = add("import", Formats::sentence("Adds those of FILE to the home's"), importProfile);
  in.add_option("--model", given->model,
                Formats::sentence("The model to take the settings for; by default the profile's"))
      ->type_name("NAME");
  given->host.declarePlaces(
      in, Formats::sentence("The folder that they are added to; by default the one that \"kiln show\" uses"));
}

}  // namespace App
