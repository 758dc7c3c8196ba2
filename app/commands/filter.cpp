// kiln filter: a print queue filter with the CUPS command line.
#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/job_options.h"
#include "app/messages.h"
#include "app/opening.h"
#include "app/queue/description.h"
#include "app/queue/queue_settings.h"
#include "app/silent_run.h"
#include "app/system/confinement.h"
#include "app/system/installed_fonts.h"
#include "app/system/interruption.h"
#include "app/system/standard_files.h"
#include "files/disk.h"
#include "files/path_text.h"
#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "press/job/print.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <system_error>

namespace App {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view footer = Formats::sentenceTemplate(
    R"(A print queue calls it as JOB USER TITLE COPIES OPTIONS [FILE]; without FILE the job comes on standard input.
The printed pages go to standard output, messages for the scheduler to standard error. docs/print-queue.md
tells how to install it.

The settings of a job are the first of these that there are:
  the PrintTicket DIR/QUEUE.xml, where the environment's PRINTER names the queue
  what was accepted in "kiln show" and is kept in the folder of --home
  what the job's user accepted in "kiln show", where this runs as that very user
and on top what the job's options say, "kiln-MirrorImage=MirrorImage" for example, as far as --allow lets them.

Exit status: 0 when the pages were written, 1 when they were not.)");

using JobOptions = std::vector<std::pair<std::string, std::string>>;

struct FilterOptions {
  QueueSettings queue;
  std::string queues = defaultQueuesFolder;
  bool countsPages = false;
};

// The arguments of the filter.
struct Call {
  std::string user;
  std::string copies;
  std::string options;
  std::string file;
};

void demandCopies(const std::string& word) {
  int copies = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, problem] = std::from_chars(word.data(), end, copies);
  if (problem != std::errc() || stop != end || copies < 1)
    throw Failure(1, Formats::sentence("The number of copies is {1}: it has to be a whole number of at least 1.",
                                       Formats::quoted(word)));
}

Call toCall(const std::vector<std::string>& words) {
  if (!words.empty() && words.front().starts_with('-'))
    throw Failure(
        1, Formats::sentence("kiln filter has no option {1}; \"kiln filter --help\" lists them.", words.front()));
  if (words.size() != 5 && words.size() != 6)
    throw Failure(1, Formats::sentence(
                         "kiln filter takes JOB USER TITLE COPIES OPTIONS [FILE] from a print queue, not {1} words.",
                         words.size()));
  demandCopies(words[3]);
  return {words[1], words[3], words[4], words.size() == 6 ? words[5] : "-"};
}

void warn(std::string_view sentence) { message(Message::warning, sentence); }

// The settings of properties among the job's options, limited to those that the administrator allows.
Refhost::TracePairs jobSettings(const JobOptions& jobOptions, const QueueSettings& queue,
                                const Refhost::PropertyModel& model) {
  constexpr std::string_view prefix = "kiln-";
  for (const std::string& property : queue.allowed) demandAllowable(property, model);
  Refhost::TracePairs choices;
  for (const auto& [name, value] : jobOptions) {
    if (!name.starts_with(prefix)) continue;
    const std::string property = name.substr(prefix.size());
    if (std::ranges::find(queue.allowed, property) == queue.allowed.end())
      throw std::runtime_error(Formats::sentence(
          "This queue takes no option {1} from a job: its administrator has to allow it.", Formats::quoted(name)));
    choices.emplace_back(Formats::toUtf16(property), Formats::toUtf16(value));
  }
  return choices;
}

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// The description of the queue's printer; empty for none, although the scheduler then names a file, too.
std::string queueDescription() {
  const fs::path file = toPath(environment("PPD"));
  constexpr std::size_t longest = 16u << 20u;
  return file.empty() || !isThere(file) ? "" : Files::realDisk().read(file, longest);
}

// What the queue's options are by default, as its administrator may have set them since, and on top the job's choices.
OptionChoices jobChoices(const JobOptions& jobOptions, const OptionChoices& defaults, const std::string& description) {
  OptionChoices choices;
  for (const auto& [option, choice] : effectDefaults(description))
    if (defaults.contains(option)) choices[option] = choice;
  for (const auto& [option, choice] : offeredChoices(jobOptions)) choices[option] = choice;
  return choices;
}

Press::Effects effectsOf(const Call& call, const FilterOptions& given) {
  QueueSettings settings = given.queue;
  const std::string queue = environment("PRINTER");
  std::optional<QueueFolder> kept;
  if (!queue.empty()) kept.emplace(toPath(given.queues), queue);
  const bool isEnabled = kept && kept->exists();
  const std::string description = queueDescription();
  if (isEnabled)
    takeLines(kept->read(kept->settings()), kept->settings(), settings);
  else if (withoutEffects(description))
    throw std::runtime_error(Formats::sentence(
        "The effects of this queue are in its description, but not in {1}: enable it again.", given.queues));

  const fs::path ticket = ticketOfQueue(settings, kept ? &*kept : nullptr, queue);
  const QueueRun opened = openQueue(settings, ticket, call.user, warn);
  if (!opened.source.empty()) message(Message::debug, opened.source);
  const JobOptions jobOptions = parseJobOptions(call.options);
  const Refhost::TracePairs set = jobSettings(jobOptions, settings, opened.run->preferences().model());
  const OptionChoices choices = isEnabled ? jobChoices(jobOptions, settings.defaults, description) : OptionChoices();
  if (!opened.isSet && set.empty() && choices.empty())
    message(Message::warning, Formats::sentence("Nothing says how this queue prints, so the job stays as it is."));
  chooseOffered(*opened.run, settings.allowed, settings.defaults, choices);
  opened.run->choose(set);
  return Press::effectsFromProperties(opened.run->accept());
}

// The job is the one input that anybody can send: whatever it makes of this process can then read nothing but that job,
// the overlays and the fonts, and change nothing but the temporary files.
void confineTo(const StandardFiles& files, const Press::Effects& effects) {
  NeededFiles needed;
  needed.toWrite = files.temporaryFolder();
  // The libraries' own files.
  needed.toRead = {
      "/usr",       "/lib",      "/lib64",      "/etc/ld.so.cache", "/etc/localtime", "/var/cache/fontconfig",
      "/etc/fonts", "/dev/null", "/dev/urandom"};
  std::ranges::move(fontPlaces(), std::back_inserter(needed.toRead));
  for (const Press::Overlay& overlay : effects.overlays) {
    needed.toRead.push_back(overlay.file);
    needed.toRead.push_back(overlay.file.parent_path() / Files::pathFromText(Formats::overlayIndexName));  // its name
  }
  needed.toRead.push_back(files.in());
  const Confined confined = confine(needed);
  if (!confined.toFiles)
    message(Message::debug, Formats::sentence("This kernel does not confine the filter to its files."));
  if (!confined.toCalls)
    message(Message::debug, Formats::sentence("This kernel does not keep the filter from starting programs."));
}

// Reports progress to the scheduler, in pages of the job, at most once a second.
class ProgressMessages {
 public:
  void show(int done, int total) {
    pages = total;
    const auto now = Clock::now();
    if (now < nextTime) return;
    nextTime = now + std::chrono::seconds(1);
    message(Message::info, Formats::sentence("Page {1} of {2}.", done, total));
  }
  int pageCount() const { return pages; }

 private:
  using Clock = std::chrono::steady_clock;

  int pages = 0;
  Clock::time_point nextTime = Clock::now() + std::chrono::seconds(1);
};

void print(const Call& call, const FilterOptions& given, const Interruption& interruption) {
  demandNoTerminal();
  const Press::Effects effects = effectsOf(call, given);
  const StandardFiles files(call.file, "-", interruption);
  confineTo(files, effects);
  files.receive();
  ProgressMessages progress;
  std::vector<std::string> notes;
  try {
    notes = Press::printPdf(files.in(), files.out(), effects, [&](int done, int total) {
      progress.show(done, total);
      return interruption.signal() == 0;
    });
  } catch (const Press::Error& error) {
    throw std::runtime_error(files.inUsersWords(error.what()));
  }
  for (const std::string& note : notes) message(Message::warning, files.inUsersWords(note));
  files.deliver();
  const int sheets = (progress.pageCount() + effects.pagesOnSheet - 1) / effects.pagesOnSheet;
  for (int sheet = 1; given.countsPages && sheet <= sheets; ++sheet)
    message(Message::page, std::to_string(sheet) + ' ' + call.copies);
}

int filter(const FilterOptions& given, const std::vector<std::string>& words) {
  const Interruption interruption;
  try {
    print(toCall(words), given, interruption);
    return 0;
  } catch (const Press::Stopped&) {
    message(Message::info, Formats::sentence("The job was cancelled."));
  } catch (const std::exception& error) {
    message(Message::error, error.what());
  }
  return 1;
}

}  // namespace

void addFilter(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<FilterOptions>();
  CLI::App& command =
      *kiln.add_subcommand("filter", Formats::sentence("Puts the effects on the jobs of a print queue"));
  command.footer(Formats::sentence(footer));
  // Everything from the job's number on is untrusted, including a title that may look like an option.
  command.prefix_command();
  command
      .add_option("--queues", given->queues, Formats::sentence("The folder where \"kiln queue\" keeps its settings"))
      ->type_name("DIR")
      ->capture_default_str();
  command.add_option("--tickets", given->queue.tickets, Formats::sentence("The folder of the queues' PrintTickets"))
      ->type_name("DIR")
      ->capture_default_str();
  addRepeatable(command, "--allow", given->queue.allowed,
                Formats::sentence("Lets jobs choose this property by an option \"kiln-NAME\""))
      ->type_name("NAME");
  command.add_flag("--count-pages", given->countsPages,
                   Formats::sentence("Tells the scheduler the pages, on a queue with no other filter that does"));
  given->queue.host.declare(command,
                            Formats::sentence("Takes what \"kiln show\" keeps in this folder, whoever prints"));
  command.callback(
      [&run, &command, given] { run = [given, words = command.remaining()] { return filter(*given, words); }; });
}

}  // namespace App
