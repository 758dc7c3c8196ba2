// A print scheduler of the test's own: a real one, which listens on the loopback alone and keeps all that it has in one
// folder. Nothing of the system's printing is touched.
#pragma once

#include "tests/script/process.h"
#include "tests/script/started.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class Scheduler {
 public:
  // Installs kiln in `folder`, as docs/print-queue.md says, and starts.
  explicit Scheduler(const std::filesystem::path& folder);

  // Ends the scheduler, with what it still runs.
  ~Scheduler();
  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;

  // Installs a filter program with this text. Those that are there are the scheduler's own "pdftopdf", and "kiln" with
  // the options that `installKiln` names.
  void installFilter(const std::string& name, const std::string& script);
  void installKiln(const std::string& options);

  // Adds a queue that prints into a file, with these lines in its description (PPD).
  void addQueue(const std::string& name, const std::string& lines);

  // Sends a job, with further words for "lp".
  void send(const std::string& queue, const std::filesystem::path& job, const std::vector<std::string>& words = {});

  // Runs a client program ("lpadmin", "cancel") on this scheduler; what it said.
  std::string client(const std::string& program, std::vector<std::string> words);

  // The bytes that were printed, once the queue has nothing more to do.
  std::string printed(const std::string& queue);

  // What the scheduler has logged so far of its jobs.
  std::string log() const;
  std::string pageLog() const;

  // Where the filters have their temporary files, and where kiln looks for the tickets of the queues.
  std::filesystem::path temporary() const { return folder / "tmp"; }
  std::filesystem::path tickets() const { return folder / "etc" / "kiln"; }

 private:
  void writeConfiguration();

  std::filesystem::path folder;
  std::string address;
  std::optional<Started> process;
};
