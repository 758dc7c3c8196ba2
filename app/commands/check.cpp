#include "app/check_run.h"
#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/host_options.h"
#include "app/system/child_process.h"
#include "check/lists.h"
#include "files/path_text.h"
#include "files/temporary_folder.h"
#include "formats/names.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/path.h"
#include "host/plugin_description.h"
#include "script/json.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>

namespace App {
namespace {

constexpr std::string_view footer =
    Formats::sentenceTemplate(R"(Each check runs in a process of its own. docs/check.md lists the checks.

Examples:
  kiln check --list
  kiln check --only 'contract/*'
  kiln check --json --only life-cycle/create

Exit status: 0 when no check failed or crashed, 1 when one did, 2 when the library
cannot be found, or the command line is wrong.)");

// The command line's values, unprocessed.
struct CheckOptions {
  std::string library;
  std::string plugin;
  std::string model = Refhost::Options().model;
  std::vector<std::string> resources;
  bool isHost = false;
  bool isList = false;
  bool isJson = false;
  std::vector<std::string> only;
  int seconds = 120;
  std::string here;
  std::string outcome;
};

struct Report {
  Checking::Check check;
  CheckOutcome outcome;
};

std::vector<Checking::Check> chosen(const CheckOptions& given) {
  std::vector<Checking::Check> checks = given.isHost ? Checking::hostChecks() : Checking::pluginChecks();
  if (given.only.empty()) return checks;
  std::erase_if(checks, [&given](const Checking::Check& check) {
    return std::none_of(given.only.begin(), given.only.end(), [&check](const std::string& pattern) {
      return Refhost::fits(Formats::toUtf16(check.id), Formats::toUtf16(pattern));
    });
  });
  if (checks.empty()) throw Failure(wrongUsage, "No check has such an id; \"kiln check --list\" tells them.");
  return checks;
}

std::size_t widest(const std::vector<Checking::Check>& checks) {
  std::size_t width = 0;
  for (const Checking::Check& check : checks) width = std::max(width, std::string_view(check.id).size());
  return width;
}

std::string padded(std::string_view word, std::size_t width) {
  return std::string(word).append(width - std::min(width, word.size()), ' ');
}

int list(const CheckOptions& given) {
  const auto checks = chosen(given);
  for (const Checking::Check& check : checks)
    std::cout << padded(check.id, widest(checks)) << "  " << check.sentence << '\n';
  return 0;
}

// The name that is given, else the one that a package tells of the library, else the effect tab's.
std::string nameOf(const CheckOptions& given, const std::filesystem::path& library,
                   const Files::LayeredFolder& resources) {
  if (!given.plugin.empty() || given.isHost) return given.plugin;
  const auto description = Refhost::describePlugin(Refhost::ChromeFolders(resources), library);
  return description ? description->name : std::string(Formats::pluginName);
}

Checking::Subject subjectOf(const CheckOptions& given) {
  HostOptions places;
  places.plugin = given.library;
  places.resources = given.resources;
  places.marks.clear();
  const Refhost::Options options = places.resolve();
  std::error_code error;
  const auto library = std::filesystem::absolute(options.plugin);
  if (!std::filesystem::is_regular_file(library, error))
    throw Failure(cannotOpen, "There is no library " + Files::shownPath(library) + ".");
  return {library, nameOf(given, library, options.resources), options.resources, given.model, {}};
}

// The check that `--here` names, in this process.
int runOne(const CheckOptions& given) {
  CheckOptions all = given;
  all.only = {given.here};
  const Checking::Check check = chosen(all).front();
  Files::TemporaryFolder folder;
  Checking::Subject subject = subjectOf(given);
  subject.home = folder.path();
  if (!given.outcome.empty()) crashQuietly();
  const CheckOutcome outcome = runHere(check, subject);
  if (given.outcome.empty())
    std::cout << nameOf(outcome.result) << ' ' << outcome.reason << '\n';
  else
    writeOutcome(toPath(given.outcome), outcome);
  return 0;
}

CheckOutcome runInProcess(const CheckOptions& given, const Checking::Subject& subject, const Checking::Check& check,
                          const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / "outcome";
  std::error_code ignored;
  std::filesystem::remove(file, ignored);
  std::vector<std::string> words = {"check",     Formats::toUtf8(subject.library.u16string()),
                                    "--here",    check.id,
                                    "--outcome", Formats::toUtf8(file.u16string()),
                                    "--name",    subject.plugin,
                                    "--model",   given.model};
  for (const std::string& resources : given.resources) words.insert(words.end(), {"--resources", resources});
  if (given.isHost) words.emplace_back("--host");
  return runApart(words, file, given.seconds);
}

void print(const Report& report, std::size_t width) {
  std::cout << padded(nameOf(report.outcome.result), 8) << padded(report.check.id, width) << "  "
            << report.check.sentence << '\n';
  if (!report.outcome.reason.empty())
    std::cout << std::string(8, ' ') << Formats::printable(report.outcome.reason) << '\n';
  std::cout.flush();
}

std::array<std::size_t, 4> countsOf(const std::vector<Report>& reports) {
  std::array<std::size_t, 4> counts{};
  for (const Report& report : reports) ++counts[static_cast<std::size_t>(report.outcome.result)];
  return counts;
}

void printCounts(const std::vector<Report>& reports) {
  const auto counts = countsOf(reports);
  std::cout << '\n'
            << counts[0] << " passed, " << counts[1] << " failed, " << counts[2] << " crashed, " << counts[3]
            << " skipped\n";
}

void printJson(const Checking::Subject& subject, const std::vector<Report>& reports) {
  Script::Json checks = Script::Json::array();
  for (const Report& report : reports) {
    Script::Json check = {
        {"id", report.check.id}, {"sentence", report.check.sentence}, {"result", nameOf(report.outcome.result)}};
    if (!report.outcome.reason.empty()) check["reason"] = report.outcome.reason;
    checks.push_back(check);
  }
  const auto counts = countsOf(reports);
  std::cout << Script::toLine({{"library", Formats::toUtf8(subject.library.u16string())},
                               {"passed", counts[0]},
                               {"failed", counts[1]},
                               {"crashed", counts[2]},
                               {"skipped", counts[3]},
                               {"checks", checks}})
            << '\n';
}

int check(const CheckOptions& given) {
  if (given.isList) return list(given);
  if (given.isHost && given.library.empty())
    throw Failure(wrongUsage, "--host needs a LIBRARY; see \"kiln check --help\".");
  if (!given.here.empty()) return runOne(given);
  const auto checks = chosen(given);
  const Checking::Subject subject = subjectOf(given);
  const Files::TemporaryFolder folder;
  std::vector<Report> reports;
  for (const Checking::Check& each : checks) {
    reports.push_back({each, runInProcess(given, subject, each, folder.path())});
    if (!given.isJson) print(reports.back(), widest(checks));
  }
  if (given.isJson)
    printJson(subject, reports);
  else
    printCounts(reports);
  const auto counts = countsOf(reports);
  return counts[1] + counts[2] == 0 ? 0 : 1;
}

}  // namespace

void addCheck(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<CheckOptions>();
  CLI::App& command =
      *kiln.add_subcommand("check", Formats::sentence("Checks whether a plug-in, or a host, honours the contract"));
  command.footer(Formats::sentence(footer));
  command.add_option("LIBRARY", given->library, Formats::sentence("The library; without it the plug-in beside kiln"))
      ->type_name("");
  command.add_flag("--host", given->isHost,
                   Formats::sentence("The library has a host, packaged as docs/check.md says"));
  command.add_flag("--list", given->isList, Formats::sentence("Lists the checks, and runs none"));
  addRepeatable(command, "--only", given->only, Formats::sentence("Runs the checks whose id fits, with * for any part"))
      ->type_name("PATTERN");
  command.add_flag("--json", given->isJson, Formats::sentence("Tells the results as one line of JSON"));
  command.add_option("--seconds", given->seconds, Formats::sentence("The longest time for each check"))
      ->type_name("N")
      ->check(CLI::Range(1, 86400).description(""))
      ->capture_default_str();
  command
      .add_option(
          "--name", given->plugin,
          Formats::sentence("The name of the plug-in in the library; by default the one that its package tells"))
      ->type_name("NAME");
  command
      .add_option("--model", given->model,
                  Formats::sentence("A shipped model description by its name, or one of your own by its path"))
      ->type_name("NAME")
      ->capture_default_str();
  addRepeatable(command, "--resources", given->resources,
                Formats::sentence("A folder to look for layouts, texts and models in; by default those of this kiln"))
      ->type_name("DIR");
  command.add_option("--here", given->here, Formats::sentence("Runs this one check in this process, for a debugger"))
      ->type_name("ID");
  command.add_option("--outcome", given->outcome)->group("");
  command.callback([&run, given] { run = [given] { return check(*given); }; });
}

}  // namespace App
