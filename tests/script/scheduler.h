// A real print scheduler for tests, which listens on the loopback interface only and keeps all its files in one folder.
// Does not affect the system's printing.
#pragma once

#include "tests/script/process.h"
#include "tests/script/started.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class Scheduler {
 public:
  // Installs kiln in `folder`, with the filter of docs/print-queue.md, and starts.
  explicit Scheduler(const std::filesystem::path& folder);

  // Stops the scheduler and its jobs.
  ~Scheduler();
  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;

  // Installs a filter program with this text. Predefined are the scheduler's own "pdftopdf", and "kiln" with the
  // options of `installKiln`.
  void installFilter(const std::string& name, const std::string& script);
  void installKiln(const std::string& options);

  // Adds a queue that prints to a file, with these lines in its description (PPD), or with this whole one; an empty one
  // makes a raw queue.
  void addQueue(const std::string& name, const std::string& lines);
  void addQueueWith(const std::string& name, const std::string& description);

  // The description of a queue, byte by byte.
  std::string description(const std::string& queue) const;

  // Sends a job, with additional arguments for "lp".
  void send(const std::string& queue, const std::filesystem::path& job, const std::vector<std::string>& words = {});

  // Runs a client program ("lpadmin", "cancel") for this scheduler; returns its output.
  std::string client(const std::string& program, std::vector<std::string> words);

  // The printed bytes, once the queue is idle.
  std::string printed(const std::string& queue);

  // Where programs find it: the value of CUPS_SERVER.
  const std::string& server() const { return address; }

  // The scheduler's log of its jobs so far.
  std::string log() const;
  std::string pageLog() const;

  // Where the filters have their temporary files, and where kiln looks for the tickets of the queues.
  std::filesystem::path temporary() const { return folder / "tmp"; }
  std::filesystem::path tickets() const { return folder / "etc" / "kiln"; }

  // Where "kiln queue" keeps its settings.
  std::filesystem::path queues() const { return tickets() / "queues"; }

 private:
  void writeConfiguration();

  std::filesystem::path folder;
  std::string address;
  std::optional<Started> process;
};
