#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/host_options.h"
#include "app/system/platform.h"
#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "script/commands.h"
#include "script/replay.h"
#include "script/run.h"

#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <istream>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <streambuf>

namespace App {
namespace {

constexpr std::string_view footer =
    Formats::sentenceTemplate(R"(The commands are described in docs/drive.md. Each is answered by one line of JSON.

Examples:
  echo 'click ePTKWPageMirrorImage' | kiln drive
  kiln drive --model kvt --locale ja-JP --trace trace.jsonl regression.drive
  kiln drive --expect session.drive                        what "kiln show --record" has written

Exit status: 0 when every command was answered with "ok" true, 1 when one was not; with --expect
0 when all answers are as recorded, 1 when one differs.
2 when the preferences cannot be opened, the commands cannot be read, or the command line is wrong.)");

const std::map<std::string, Refhost::Mode> modes = {{std::string(Formats::modeDocProp), Refhost::Mode::docProp},
                                                    {std::string(Formats::modePDC), Refhost::Mode::pdc},
                                                    {std::string(Formats::modePrePrint), Refhost::Mode::prePrint},
                                                    {"rootless", Refhost::Mode::rootless}};

// The command line's values, unprocessed.
struct DriveOptions {
  HostOptions host;
  std::string script;
  std::string mode{Formats::modeDocProp};
  bool inactive = false;
  std::vector<std::string> settings;
  std::vector<std::string> properties;
  std::vector<std::string> customisation;
  std::string locale = "en-US";
  std::vector<std::string> without;
  int dpi = 96;
  std::string fonts;
  std::string jobStep = "-";
  std::string trace;
  bool expects = false;

  // The options that are given, by name.
  std::set<std::string> named;
};

std::pair<std::u16string, std::optional<std::u16string>> toSetting(const std::string& word) {
  if (word.find('=') != std::string::npos) return toPair("--config", word);
  if (word.size() > 1 && word.ends_with('-')) return {Formats::toUtf16(word.substr(0, word.size() - 1)), std::nullopt};
  throw Failure(wrongUsage, "--config takes KEY=VALUE or KEY-, and \"" + word + "\" is neither.");
}

std::vector<std::u16string> toNames(const std::string& list) {
  std::vector<std::u16string> names;
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(',', start), list.size());
    names.push_back(Formats::toUtf16(list.substr(start, end - start)));
    start = end + 1;
  }
  return names;
}

Script::Request toRequest(const DriveOptions& given) {
  Script::Request request;
  Refhost::Options& options = request.preferences;
  options = given.host.resolve();
  options.mode = modes.at(given.mode);
  options.active = !given.inactive;
  for (const std::string& word : given.settings) options.settings.push_back(toSetting(word));
  options.properties = toPairs("--property", given.properties);
  options.customisation = toPairs("--customise", given.customisation);
  options.locale = given.locale;
  for (const std::string& id : given.without) options.withoutWidgets.insert(Formats::toUtf16(id));
  options.dpi = given.dpi;
  if (given.fonts == "-")
    options.fonts = nullptr;
  else if (!given.fonts.empty())
    options.fonts = [names = toNames(given.fonts)] { return names; };
  request.jobStep = Script::jobStepOf(Formats::toUtf16(given.jobStep));
  request.trace = toPath(given.trace);
  return request;
}

// Standard input as it is, whose own stream takes an error for the end.
class StandardInput final : public std::streambuf {
 protected:
  int_type underflow() override {
    const int got = std::getc(stdin);
    if (got == EOF && std::ferror(stdin) != 0) throw std::runtime_error("");  // the stream turns bad
    if (got == EOF) return traits_type::eof();
    unit = static_cast<char>(got);
    setg(&unit, &unit, &unit + 1);
    return traits_type::to_int_type(unit);
  }

 private:
  char unit = 0;
};

// A recorded option that may be repeated comes before those given; another one is taken when it is not given.
void takeRecorded(DriveOptions& given, const Script::RecordedScript& script) {
  const std::map<std::string, std::string*> single = {
      {"model", &given.host.model}, {"mode", &given.mode}, {"locale", &given.locale}, {"fonts", &given.fonts}};
  for (const auto& [name, value] : single)
    if (const auto values = script.valuesOf(name); !values.empty() && !given.named.contains("--" + name))
      *value = values.back();
  const std::map<std::string, std::vector<std::string>*> repeated = {{"property", &given.properties},
                                                                     {"config", &given.settings},
                                                                     {"customise", &given.customisation},
                                                                     {"without", &given.without}};
  for (const auto& [name, values] : repeated) {
    const auto recorded = script.valuesOf(name);
    values->insert(values->begin(), recorded.begin(), recorded.end());
  }
  if (!script.valuesOf("inactive").empty()) given.inactive = true;
  if (!modes.contains(given.mode)) throw std::runtime_error(script.name + " names no mode of the preferences.");
  if (const auto dpi = script.valuesOf("dpi"); !dpi.empty() && !given.named.contains("--dpi")) {
    const auto [end, error] = std::from_chars(dpi.back().data(), dpi.back().data() + dpi.back().size(), given.dpi);
    if (error != std::errc() || *end != '\0' || given.dpi < 1)
      throw std::runtime_error(script.name + " names no number of pixels per inch.");
  }
}

int compare(DriveOptions given, std::istream& lines) {
  const auto script = Script::readRecording(lines, given.script.empty() ? "Standard input" : given.script);
  takeRecorded(given, script);
  const Script::Request request = toRequest(given);
  prepareScreen(given.dpi);
  return Script::replay(request, script, std::cout);
}

int run(const DriveOptions& given, std::istream& commands) {
  const Script::Request request = toRequest(given);
  prepareScreen(given.dpi);
  return Script::run(request, commands, std::cout);
}

int drive(const DriveOptions& given) {
  std::ifstream file;
  if (!given.script.empty()) {
    file.open(toPath(given.script), std::ios::binary);
    if (!file) throw Failure(cannotOpen, "The script " + given.script + " cannot be read.");
  }
  StandardInput input;
  std::istream standard(&input);
  std::istream& commands = given.script.empty() ? standard : file;
  try {
    const int status = given.expects ? compare(given, commands) : run(given, commands);
    if (!std::cout) throw Failure(1, "The answers cannot be written.");
    return status;
  } catch (const Failure&) {
    throw;
  } catch (const std::exception& error) {
    throw Failure(cannotOpen, error.what());
  }
}

}  // namespace

void addDrive(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<DriveOptions>();
  CLI::App& command = *kiln.add_subcommand(
      "drive", Formats::sentence("Runs the preferences without a window, by a script of commands"));
  command.footer(Formats::sentence(footer));
  command
      .add_option("SCRIPT", given->script, Formats::sentence("The file with the commands; without it standard input"))
      ->type_name("");
  given->host.marks.clear();  // a script finds the same on every machine
  given->host.declare(
      command,
      Formats::sentence("The folder for what a user keeps; without it a temporary one that goes with the run"));
  command
      .add_option("--mode", given->mode, Formats::sentence("DocProp, PDC, PrePrint, or rootless for no user interface"))
      ->type_name("MODE")
      ->check(CLI::IsMember(modes).description(""))
      ->capture_default_str();
  command.add_flag("--inactive", given->inactive, Formats::sentence("The host has the plug-in switched off"));
  addRepeatable(command, "--config", given->settings, Formats::sentence("A host setting; KEY- makes it not exist"))
      ->type_name("KEY=VALUE");
  addRepeatable(command, "--property", given->properties,
                Formats::sentence("A property's value when the run opens, ModelNumber=KVT for example"))
      ->type_name("NAME=VALUE");
  addRepeatable(command, "--customise", given->customisation, Formats::sentence("A value of the XML customisation"))
      ->type_name("KEY=VALUE");
  command.add_option("--locale", given->locale, Formats::sentence("The user interface's language"))
      ->type_name("NAME")
      ->capture_default_str();
  addRepeatable(command, "--without", given->without,
                Formats::sentence("Every layout loads as if it had no widget of that id"))
      ->type_name("ID");
  command.add_option("--dpi", given->dpi, Formats::sentence("The screen's horizontal pixels per inch"))
      ->type_name("N")
      ->check(CLI::Range(1, 10000).description(""))
      ->capture_default_str();
  command
      .add_option("--fonts", given->fonts,
                  Formats::sentence("The installed font faces, - when they cannot be told; by default this machine's"))
      ->type_name("A,B,C");
  command
      .add_option("--job-step", given->jobStep,
                  Formats::sentence("What the host's job step answers from the opening on"))
      ->type_name("NAME");
  command
      .add_option("--trace", given->trace,
                  Formats::sentence("Also writes every trace event to this file, as it happens"))
      ->type_name("FILE");
  command.add_flag("--expect", given->expects,
                   Formats::sentence("Compares the answers with those that the script has recorded"));
  command.callback([&run, &command, given] {
    for (const CLI::Option* option : command.get_options())
      if (option->count() > 0) given->named.insert(option->get_name());
    run = [given] { return drive(*given); };
  });
}

}  // namespace App
