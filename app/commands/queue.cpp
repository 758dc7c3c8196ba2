// kiln queue: puts the effects on queues of the print service, and takes them off.
#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/messages.h"
#include "app/queue/marks.h"
#include "app/queue/queue_settings.h"
#include "app/shown_items.h"
#include "app/system/user.h"
#include "files/temporary_folder.h"
#include "files/whole_file.h"
#include "formats/near_names.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/chrome/addresses.h"
#include "press/printers/printers.h"
#include "press/printers/queues.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <regex>
#include <stdexcept>

namespace App {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln queue enable office --allow all
  kiln queue enable office --ticket confidential.xml --allow MirrorImage
  kiln queue list
  kiln queue disable office

Every program's print dialog then offers the effects of --allow. docs/print-queue.md tells more.

Exit status: 0 when it was done, 1 when it was not, and the queue is as it was,
2 when the preferences cannot be opened or the command line is wrong.)");

struct QueueCommand {
  QueueSettings settings;
  std::string queues = defaultQueuesFolder;
  std::string name;
  std::string ticket;

  QueueFolder folder() const { return {toPath(queues), name}; }
};

[[noreturn]] void refuseUnknown(const std::string& name) {
  std::vector<std::string> names;
  for (const Press::Printer& printer : Press::systemPrinters())
    if (printer.name.find('/') == printer.name.npos) names.push_back(printer.name);
  const std::string sentence =
      names.empty() ? Formats::sentence("There is no printer {1}; the system has none.", inQuotes(name))
                    : Formats::sentence("There is no printer {1}; there are {2}.", inQuotes(name), listed(names));
  throw std::runtime_error(sentence + Formats::didYouMean(names, name));
}

// The queue's description. Throws std::runtime_error, one sentence, when it can have no effects.
std::string demandDescription(const std::string& name) {
  const auto queue = Press::readQueue(name);
  if (!queue) refuseUnknown(name);
  if (queue->isClass)
    throw std::runtime_error(Formats::sentence("{1} is a class: enable the queues that are in it.", inQuotes(name)));
  if (queue->isTemporary)
    throw std::runtime_error(Formats::sentence(
        "The queue {1} comes and goes with its printer: add it to the print service for good, by lpadmin for example.",
        inQuotes(name)));
  if (!queue->description)
    throw std::runtime_error(Formats::sentence(
        "The queue {1} is raw: it prints what it gets, without any filter. Give it a driver first.", inQuotes(name)));
  return *queue->description;
}

// Gives the queue a description, and sees that it can print with it. Otherwise it has the old one again.
void change(const std::string& name, const std::string& oldDescription, const std::string& description) {
  try {
    Press::describeQueue(name, description);
    const auto queue = Press::readQueue(name);
    if (!queue || queue->description != description)
      throw std::runtime_error(
          Formats::sentence("The print service does not have the new description of the queue {1}.", inQuotes(name)));
    if (queue->lacksFilter && description != oldDescription)
      throw std::runtime_error(Formats::sentence(
          "A filter of the queue {1} is missing in the print service's folder of filters, or others than root may "
          "change it: install kiln there, as docs/print-queue.md tells.",
          inQuotes(name)));
  } catch (...) {
    const auto queue = Press::readQueue(name);
    if (queue && queue->description != oldDescription) Press::describeQueue(name, oldDescription);
    throw;
  }
}

// The files that are kept for the queue, as they were: put back unless the change is complete.
class KeptBefore {
 public:
  explicit KeptBefore(const QueueFolder& queueFolder) : folder(queueFolder), wasThere(folder.exists()) {
    if (!wasThere) return;
    for (const fs::path& file : {folder.settings(), folder.ticket(), folder.description()})
      contents[file] = fs::exists(file) ? folder.read(file) : std::string();
  }
  ~KeptBefore() {
    if (isComplete) return;
    try {
      if (!wasThere) folder.remove();
      for (const auto& [file, content] : contents) folder.write(file, content);
    } catch (const std::runtime_error& problem) {
      tell(problem.what());
    }
  }
  KeptBefore(const KeptBefore&) = delete;
  KeptBefore& operator=(const KeptBefore&) = delete;

  void complete() { isComplete = true; }

 private:
  const QueueFolder& folder;
  const bool wasThere;
  std::map<fs::path, std::string> contents;
  bool isComplete = false;
};

// The effects that the queue offers; completes the settings by what is allowed, and by the defaults.
QueueEffects effectsFor(QueueSettings& settings, const fs::path& ticket, const std::string& description) {
  const QueueRun opened = openQueue(settings, ticket, {}, tell);
  if (std::ranges::find(settings.allowed, "all") != settings.allowed.end())
    settings.allowed = offeredProperties(*opened.run);
  for (const std::string& property : settings.allowed) demandAllowable(property, opened.run->preferences().model());
  if (!opened.isSet && settings.allowed.empty())
    tell(
        Formats::sentence("Jobs stay as they are so far: --ticket sets effects for all jobs, and --allow lets each job "
                          "choose."));
  QueueEffects effects = offer(*opened.run, settings.allowed, description);
  for (const QueueOption& option : effects.options) settings.defaults[option.keyword] = option.defaultChoice;
  return effects;
}

// The ticket as it is kept for the queue. The preferences turn a watermark off that is selected and not in the list, as
// another user's own one: it is then printed as the ticket describes it, without a selection.
std::string lastingTicket(const QueueSettings& settings, const fs::path& ticket) {
  constexpr std::size_t longest = 16u << 20u;
  std::string document = Files::realDisk().read(ticket, longest);
  const QueueRun opened = openQueue(settings, ticket, {}, tell);
  const OfferedEffect watermark = offeredEffects().front();
  static const std::regex selection(R"((Watermark_Selection"\s*>\s*<[^<>]*>)([^<]*)(<))");
  std::smatch found;
  if (!std::regex_search(document, found, selection)) return document;
  for (const Mark& mark : marksOf(*opened.run, watermark))
    if (Formats::toUtf8(mark.value) == found[2]) return document;
  return document.replace(static_cast<std::size_t>(found.position(2)), static_cast<std::size_t>(found.length(2)),
                          Formats::toUtf8(Formats::noneId));
}

// The effects with the ticket in force; the kept one is a file for as long as that takes.
QueueEffects effectsWith(const std::string& ticket, QueueSettings& settings, const std::string& description) {
  const Files::TemporaryFolder folder;
  const fs::path file = folder.path() / "ticket.xml";
  Files::replaceWhole(Files::realDisk(), file, ticket);
  return effectsFor(settings, file, description);
}

int enable(const QueueCommand& given) {
  const QueueFolder folder = given.folder();
  const std::string present = demandDescription(given.name);
  const std::string own = withoutEffects(present).value_or(present);
  QueueSettings settings = given.settings;
  settings.locale = userLocale(Refhost::ChromeFolders(settings.host.resolve().resources).locales("effect"));
  const std::string ticket = given.ticket.empty() ? "" : lastingTicket(settings, toPath(given.ticket));
  const QueueEffects effects = ticket.empty() ? effectsFor(settings, ticketOfQueue(settings, nullptr, given.name), own)
                                              : effectsWith(ticket, settings, own);
  const std::string description = withEffects(own, effects);
  Press::checkDescription(description);

  KeptBefore before(folder);
  folder.write(folder.description(), own);
  folder.write(folder.ticket(), ticket);
  folder.write(folder.settings(), toLines(settings));
  change(given.name, present, description);
  before.complete();
  return 0;
}

// The queue has its own description again. `kept` is what it was when the queue was enabled.
void takeOff(const std::string& name, const std::string& present, const std::string& own, const std::string& kept) {
  change(name, present, own);
  if (!kept.empty() && kept != own)
    tell(Formats::sentence("The description of the queue {1} was changed since it was enabled: only the effects were "
                           "taken out.",
                           inQuotes(name)));
}

int disable(const QueueCommand& given) {
  const QueueFolder folder = given.folder();
  const bool wasEnabled = folder.exists();
  const auto queue = Press::readQueue(given.name);
  if (!queue && !wasEnabled) refuseUnknown(given.name);
  const auto own = queue && queue->description ? withoutEffects(*queue->description) : std::nullopt;
  if (own)
    takeOff(given.name, *queue->description, *own, wasEnabled ? folder.read(folder.description()) : "");
  else if (!queue)
    tell(Formats::sentence("There is no queue {1} any more; what was kept for it is removed.", inQuotes(given.name)));
  else if (wasEnabled)
    tell(Formats::sentence("The queue {1} has another description by now, without the effects; it stays as it is.",
                           inQuotes(given.name)));
  else
    tell(Formats::sentence("The queue {1} has no effects.", inQuotes(given.name)));
  folder.remove();
  return 0;
}

std::vector<std::string> enabledQueues(const fs::path& queues) {
  std::vector<std::string> names;
  Files::Disk& disk = Files::realDisk();
  if (disk.kind(queues) != Files::EntryKind::folder) return names;
  for (const Files::Entry& entry : disk.entries(queues))
    if (entry.name.native().front() != '.' && QueueFolder(queues, entry.name.string()).exists())
      names.push_back(entry.name.string());
  std::ranges::sort(names);
  return names;
}

int list(const QueueCommand& given) {
  for (const std::string& name : enabledQueues(toPath(given.queues))) {
    const auto queue = Press::readQueue(name);
    if (!queue) {
      tell(Formats::sentence("There is no queue {1} any more: \"kiln queue disable\" removes what is kept for it.",
                             inQuotes(name)));
      continue;
    }
    if (!queue->description || !withoutEffects(*queue->description)) {
      tell(Formats::sentence("The queue {1} has another description by now, without the effects: enable it again.",
                             inQuotes(name)));
      continue;
    }
    const QueueFolder folder(toPath(given.queues), name);
    QueueSettings settings;
    takeLines(folder.read(folder.settings()), folder.settings(), settings);
    std::cout << Formats::printable(name);
    for (std::size_t i = 0; i < settings.allowed.size(); ++i)
      std::cout << (i == 0 ? '\t' : ' ') << Formats::printable(settings.allowed[i]);
    std::cout << '\n';
  }
  return 0;
}

CLI::App& addPart(CLI::App& queue, Run& run, const char* name, const std::string& help,
                  const std::shared_ptr<QueueCommand>& given, int (*work)(const QueueCommand&)) {
  CLI::App& part = *queue.add_subcommand(name, help);
  part.callback([&run, given, work] { run = [given, work] { return work(*given); }; });
  if (work != &list)
    part.add_option("QUEUE", given->name, Formats::sentence("The queue's name, as \"lpstat -e\" lists it"))
        ->required()
        ->type_name("");
  part.add_option("--queues", given->queues, Formats::sentence("The folder where \"kiln queue\" keeps its settings"))
      ->type_name("DIR")
      ->capture_default_str();
  return part;
}

void addEnabling(CLI::App& queue, Run& run) {
  const auto given = std::make_shared<QueueCommand>();
  CLI::App& part =
      addPart(queue, run, "enable", Formats::sentence("Puts the effects on a queue, or changes which"), given, enable);
  part.add_option("--ticket", given->ticket, Formats::sentence("A PrintTicket for all jobs of the queue; it is copied"))
      ->type_name("FILE");
  addRepeatable(part, "--allow", given->settings.allowed,
                Formats::sentence("Lets jobs choose this property; \"all\" for every effect"))
      ->type_name("NAME");
  part.add_option("--tickets", given->settings.tickets, Formats::sentence("The folder of the queues' PrintTickets"))
      ->type_name("DIR")
      ->capture_default_str();
  given->settings.host.declare(part,
                               Formats::sentence("Takes what \"kiln show\" keeps in this folder, whoever prints"));
}

}  // namespace

void addQueue(CLI::App& kiln, Run& run) {
  CLI::App& queue = *kiln.add_subcommand("queue", Formats::sentence("Puts the effects on queues of the print service"));
  queue.footer(Formats::sentence(footer));
  queue.require_subcommand(1);
  addEnabling(queue, run);
  addPart(queue, run, "disable", Formats::sentence("Takes the effects off a queue, which is then as before"),
          std::make_shared<QueueCommand>(), disable);
  addPart(queue, run, "list", Formats::sentence("Lists the queues with effects, and what jobs may choose"),
          std::make_shared<QueueCommand>(), list);
}

}  // namespace App
