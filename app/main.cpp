// The kiln command. Its subcommands are thin layers over the host, the print side and the faces.
#include "app/commands/commands.h"
#include "app/documents/completion.h"
#include "app/documents/manual.h"
#include "app/failure.h"
#include "app/help_formatter.h"
#include "app/host_options.h"
#include "app/messages.h"
#include "app/parser_words.h"
#include "app/system/platform.h"
#include "app/system/user.h"
#include "files/language.h"
#include "formats/near_names.h"
#include "formats/sentences.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace {

#ifdef KILN_WITHOUT_PRINTING
constexpr std::string_view footer =
    Formats::sentenceTemplate(R"("kiln help COMMAND" and "kiln COMMAND --help" tell more.

Examples:
  kiln ticket --set MirrorImage=MirrorImage
  echo 'widget ePTKWPageMirrorImage' | kiln drive)");
#else
constexpr std::string_view footer =
    Formats::sentenceTemplate(R"("kiln help COMMAND" and "kiln COMMAND --help" tell more.

Examples:
  kiln show letter.pdf
  kiln print letter.pdf printed.pdf --set MirrorImage=MirrorImage
  kiln ticket --set MirrorImage=MirrorImage
  echo 'widget ePTKWPageMirrorImage' | kiln drive)");
#endif

// The help of kiln itself, regardless of the chosen subcommand.
std::string overview(const CLI::App& kiln) {
  return kiln.get_formatter()->make_help(&kiln, kiln.get_name(), CLI::AppFormatMode::Normal);
}

App::Run telling(const std::string& text) {
  return [text] {
    std::cout << text;
    return 0;
  };
}

std::vector<std::string> commandsOf(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::App* each : command.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(each->get_name());
  return names;
}

void addHelp(CLI::App& kiln, App::Run& run) {
  CLI::App& command = *kiln.add_subcommand("help", Formats::sentence("Tells what kiln and its commands do"));
  const auto topic = std::make_shared<std::string>();
  command.add_option("COMMAND", *topic, Formats::sentence("The command to tell about"))->type_name("");
  command.callback([&kiln, &run, topic] {
    try {
      run = telling(topic->empty() ? overview(kiln) : kiln.get_subcommand(*topic)->help("kiln"));
    } catch (const CLI::OptionNotFound&) {
      throw App::Failure(App::wrongUsage, Formats::sentence("There is no command {1}; \"kiln help\" lists them.",
                                                            Formats::quoted(*topic)) +
                                              Formats::didYouMean(commandsOf(kiln), *topic));
    }
  });
}

std::vector<std::string> optionsOf(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* each : command.get_options())
    for (const std::string& name : each->get_lnames()) names.push_back("--" + name);
  return names;
}

// What the words that no command takes may be misspelt for, as a sentence; empty when that is anybody's guess.
std::string suggestion(const CLI::App& kiln) {
  const CLI::App* chosen = &kiln;
  while (!chosen->get_subcommands().empty()) chosen = chosen->get_subcommands().front();
  for (const std::string& word : kiln.remaining(true)) {
    const bool isOption = word.starts_with('-');
    const std::string sentence =
        Formats::didYouMean(isOption ? optionsOf(*chosen) : commandsOf(*chosen), word.substr(0, word.find('=')));
    if (!sentence.empty()) return sentence;
  }
  return {};
}

// The help command to suggest for an invalid command line.
std::string helpCommand(const CLI::App& kiln) {
  const auto chosen = kiln.get_subcommands();
  return chosen.empty() ? "kiln --help" : "kiln " + chosen.front()->get_name() + " --help";
}

#ifdef KILN_WITHOUT_PRINTING
App::Run documenting(const CLI::App&, const std::vector<std::string>&) { return {}; }
#else
// What shells and packages ask for, which no help tells; empty for other words.
App::Run documenting(const CLI::App& kiln, const std::vector<std::string>& words) {
  if (words.size() == 2 && words.front() == "--manual") {
    App::writeManual(kiln, App::toPath(words.back()));
    return telling({});
  }
  if (!words.empty() && words.front() == "--complete")
    return telling(App::completions(kiln, {words.begin() + 1, words.end()}));
  return {};
}
#endif

void declare(CLI::App& kiln, App::Run& run) {
  kiln.footer(Formats::sentence(footer));
  kiln.set_version_flag("--version", "kiln " KILN_VERSION, Formats::sentence("Tells the version"));
  kiln.set_help_flag("-h,--help", Formats::sentence("Tells what the command does"));
  kiln.allow_windows_style_options(false);
  kiln.formatter(std::make_shared<App::HelpFormatter>());
  kiln.require_subcommand(0, 1);
#ifndef KILN_WITHOUT_PRINTING
  App::addShow(kiln, run);
  App::addPrint(kiln, run);
  App::addFilter(kiln, run);
  App::addQueue(kiln, run);
  App::addSample(kiln, run);
  App::addPicture(kiln, run);
#endif
  App::addWatermark(kiln, run);
  App::addOverlay(kiln, run);
  App::addProfile(kiln, run);
  App::addTicket(kiln, run);
  App::addDrive(kiln, run);
  App::addCheck(kiln, run);
  addHelp(kiln, run);
}

// Parses the command line. Frees the parser's memory before the result runs.
App::Run parse(std::vector<std::string> words) {
  CLI::App kiln(
      Formats::sentence("The effect tab of a printer driver's preferences: watch it, test it, and print with it."),
      "kiln");
  App::Run run;
  declare(kiln, run);
  if (const App::Run asked = documenting(kiln, words)) return asked;
  std::reverse(words.begin(), words.end());  // the parser expects reverse order
  try {
    kiln.parse(words);
  } catch (const CLI::Success& help) {
    return [status = kiln.exit(help)] { return status; };
  } catch (const CLI::ParseError& error) {
    throw App::Failure(App::wrongUsage, Formats::sentence("{1}; see {2}.", App::parserSentence(error.what()),
                                                          Formats::quoted(helpCommand(kiln))) +
                                            suggestion(kiln));
  }
  return run ? run : telling(overview(kiln));
}

// What scripts and checks answer is compared, and is English for everybody.
void speakTo(const std::vector<std::string>& words) {
  const bool isCompared = !words.empty() && (words.front() == "drive" || words.front() == "check");
  const bool asksForHelp =
      std::ranges::any_of(words, [](const auto& word) { return word == "--help" || word == "-h"; });
  if (!isCompared || asksForHelp) Files::speak(App::userLocale(Files::spokenLocales()));
}

}  // namespace

int main(int count, char** words) {
  int status = 1;
  std::string sentence;
  // A scheduler ignores messages of a filter without a known prefix.
  bool isFilter = false;
  try {
    App::prepareStreams();
    App::prepareMemory();
    auto arguments = App::arguments(count, words);
    speakTo(arguments);
    isFilter = !arguments.empty() && arguments.front() == "filter";
    const int result = parse(std::move(arguments))();
    if (!std::cout.flush() && result == 0)
      throw std::runtime_error(
          Formats::sentence("Standard output cannot be written: see that there is room where it goes."));
    return result;
  } catch (const App::Failure& failure) {
    status = failure.status();
    sentence = failure.what();
  } catch (const std::exception& error) {
    sentence = error.what();
  }
  if (isFilter)
    App::message(App::Message::error, sentence);
  else
    App::tell(sentence);
  return status;
}
