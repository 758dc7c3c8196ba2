#include "app/queue/queue_settings.h"

#include "app/opening.h"
#include "app/system/account.h"
#include "files/disk.h"
#include "files/system_reason.h"
#include "files/whole_file.h"
#include "formats/sentences.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace App {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestFile = 16u << 20u;

fs::path folderOf(const fs::path& queues, const std::string& queue) {
  if (queue.empty() || queue.front() == '.' || queue.find('/') != queue.npos)
    throw std::runtime_error(Formats::sentence("No ticket can be named after the queue {1}.", Formats::quoted(queue)));
  return queues / queue;
}

std::string absolute(const std::string& path) {
  return path.empty() ? path : fs::absolute(toPath(path)).lexically_normal().string();
}

// A shipped model is named, one of the administrator's own is a file.
std::string lastingModel(const std::string& model) {
  return model.find('/') == model.npos && !fs::exists(toPath(model)) ? model : absolute(model);
}

void add(std::string& lines, const std::string& name, const std::string& value) {
  if (value.empty()) return;
  if (value.find('\n') != value.npos)
    throw std::runtime_error(
        Formats::sentence("{1} cannot be kept for a queue, since it has a line break.", Formats::quoted(value)));
  lines += name + ' ' + value + '\n';
}

bool take(const std::string& name, const std::string& value, QueueSettings& settings) {
  if (name == "model") settings.host.model = value;
  if (name == "home") settings.host.home = value;
  if (name == "marks") settings.host.marks = value;
  if (name == "plugin") settings.host.plugin = value;
  if (name == "resources") settings.host.resources.push_back(value);
  if (name == "tickets") settings.tickets = value;
  if (name == "language") settings.locale = value;
  if (name == "allow") settings.allowed.push_back(value);
  if (const std::size_t space = value.find(' '); name == "default" && space != value.npos)
    settings.defaults[value.substr(0, space)] = value.substr(space + 1);
  constexpr const char* names[] = {"model",   "home",     "marks", "plugin", "resources",
                                   "tickets", "language", "allow", "default"};
  return std::ranges::find(names, name) != std::end(names);
}

// What the scheduler's user needs, whatever the mask of whoever calls the command is.
constexpr fs::perms readable =
    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms searchable = readable | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

// Folders that are there already keep the permissions that they have.
void createReadableFolders(const fs::path& folder) {
  if (folder.empty() || isThere(folder)) return;
  createReadableFolders(folder.parent_path());
  Files::createFolders(Files::realDisk(), folder);
  std::error_code error;
  fs::permissions(folder, searchable, error);
  if (error) throw Files::DiskError(folder, "written", error);
}

}  // namespace

QueueFolder::QueueFolder(const fs::path& queues, const std::string& queue) : folder(folderOf(queues, queue)) {}

bool QueueFolder::exists() const { return isThere(folder) && isThere(settings()); }

std::string QueueFolder::read(const fs::path& file) const {
  demandGuarded(folder);
  demandGuarded(file);
  return Files::realDisk().read(file, longestFile);
}

void QueueFolder::write(const fs::path& file, const std::string& content) const {
  if (content.empty()) {
    if (isThere(folder)) Files::realDisk().remove(file);
    return;
  }
  createReadableFolders(folder);
  Files::replaceWhole(Files::realDisk(), file, content);
  std::error_code error;
  fs::permissions(file, readable, error);
  if (error) throw Files::DiskError(file, "written", error);
}

void QueueFolder::remove() const {
  if (!isThere(folder)) return;
  for (const fs::path& file : {settings(), ticket(), description()}) Files::realDisk().remove(file);
  std::error_code ignored;  // others may keep files there
  fs::remove(folder, ignored);
}

std::string toLines(const QueueSettings& settings) {
  std::string lines = "# \"kiln queue enable\" writes this file, and \"kiln filter\" reads it.\n";
  add(lines, "model", lastingModel(settings.host.model));
  add(lines, "home", absolute(settings.host.home));
  add(lines, "marks", absolute(settings.host.marks));
  add(lines, "plugin", absolute(settings.host.plugin));
  for (const std::string& folder : settings.host.resources) add(lines, "resources", absolute(folder));
  add(lines, "tickets", absolute(settings.tickets));
  add(lines, "language", settings.locale);
  for (const std::string& property : settings.allowed) add(lines, "allow", property);
  for (const auto& [option, choice] : settings.defaults) add(lines, "default", option + ' ' + choice);
  return lines;
}

void takeLines(const std::string& lines, const fs::path& file, QueueSettings& settings) {
  std::size_t start = 0;
  while (start < lines.size()) {
    const std::size_t end = std::min(lines.find('\n', start), lines.size());
    const std::string line = lines.substr(start, end - start);
    const std::size_t space = line.find(' ');
    const bool isKnown = line.empty() || line.front() == '#' ||
                         (space != line.npos && take(line.substr(0, space), line.substr(space + 1), settings));
    if (!isKnown)
      throw std::runtime_error(
          Formats::sentence("{1} is damaged: call \"kiln queue enable\" for the queue again.", file.string()));
    start = end + 1;
  }
}

void demandGuarded(const fs::path& path) {
  if ((fs::status(path).permissions() & fs::perms::others_write) != fs::perms::none)
    throw std::runtime_error(
        Formats::sentence("{1} may be changed by everybody: take that permission from others.", path.string()));
}

fs::path ticketOfQueue(const QueueSettings& settings, const QueueFolder* kept, const std::string& queue) {
  if (kept != nullptr && kept->exists() && isThere(kept->ticket())) {
    demandGuarded(kept->ticket());
    return kept->ticket();
  }
  if (queue.empty()) return {};
  const fs::path folder = toPath(settings.tickets);
  fs::path ticket = folderOf(folder, queue);
  ticket += ".xml";
  if (!isThere(folder) || !isThere(ticket)) return {};
  demandGuarded(folder);
  demandGuarded(ticket);
  return ticket;
}

QueueRun openQueue(const QueueSettings& settings, const fs::path& ticket, const std::string& user, Tell tellUser) {
  QueueRun opened;
  Refhost::Options options = settings.host.resolve();
  options.locale = settings.locale;
  if (ticket.empty()) {
    fs::path home = options.home;
    const Account account = runningAccount();
    if (home.empty() && !user.empty() && account.name == user) home = account.folder;
    const auto kept = home.empty() ? std::nullopt : keptIn(home, options, tellUser);
    if (kept) {
      opened.source = Formats::sentence("The settings are those kept in {1}.", home.string());
      options.home = home;
      options.properties = *kept;
      opened.isSet = !kept->empty();
    }
  }
  opened.run = std::make_unique<SilentRun>(options, tellUser);
  if (ticket.empty()) return opened;
  opened.source = Formats::sentence("The settings are those in {1}.", ticket.string());
  opened.run->takeTicket(ticket);
  opened.isSet = true;
  return opened;
}

}  // namespace App
