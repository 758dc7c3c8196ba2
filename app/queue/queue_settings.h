// How a queue prints with effects: what "kiln queue enable" keeps, and "kiln filter" reads.
#pragma once

#include "app/host_options.h"
#include "app/queue/offers.h"
#include "app/silent_run.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace App {

struct QueueSettings {
  HostOptions host;
  std::string tickets = "/etc/kiln";
  std::vector<std::string> allowed;

  // The language of the marks' names and texts.
  std::string locale = "en-US";

  // What the options of the queue's description stand for when no job chooses.
  OptionChoices defaults;
};

inline constexpr const char* defaultQueuesFolder = "/etc/kiln/queues";

// The files that are kept for one queue, in a folder of its name. Only its owner changes them, and everybody reads
// them, since the scheduler runs filters as another user.
class QueueFolder {
 public:
  // Throws std::runtime_error, one sentence, for a name that no folder can have.
  QueueFolder(const std::filesystem::path& queues, const std::string& queue);

  // Whether the queue has been enabled.
  bool exists() const;

  std::filesystem::path settings() const { return folder / "settings"; }
  std::filesystem::path ticket() const { return folder / "ticket.xml"; }

  // The description of the queue's printer without the effects.
  std::filesystem::path description() const { return folder / "description.ppd"; }

  // Read and replace a file of this folder, whole; an empty content removes it. Throw std::runtime_error, one sentence.
  // Files that everybody may write to are rejected.
  std::string read(const std::filesystem::path& file) const;
  void write(const std::filesystem::path& file, const std::string& content) const;

  void remove() const;

 private:
  std::filesystem::path folder;
};

// The lines of the settings file, and back: what they say replaces what `settings` has. Throws std::runtime_error, one
// sentence.
std::string toLines(const QueueSettings& settings);
void takeLines(const std::string& lines, const std::filesystem::path& file, QueueSettings& settings);

// Rejects files that others than their owner may change.
void demandGuarded(const std::filesystem::path& path);

// The queue's ticket, set by the administrator: the one that was enabled with it, else the one in the folder of
// tickets. Empty when there is none.
std::filesystem::path ticketOfQueue(const QueueSettings& settings, const QueueFolder* kept, const std::string& queue);

// The preferences as the queue prints without a job's choices: with the ticket, else with the settings kept in the
// home, or in that of the user where this runs as that very user.
struct QueueRun {
  std::unique_ptr<SilentRun> run;
  bool isSet = false;
  std::string source;  // where the settings are from, as a sentence; empty for nowhere
};

QueueRun openQueue(const QueueSettings& settings, const std::filesystem::path& ticket, const std::string& user,
                   Tell tellUser);

}  // namespace App
