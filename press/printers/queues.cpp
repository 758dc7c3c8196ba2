#include "press/printers/queues.h"

#include "files/temporary_folder.h"
#include "formats/sentences.h"
#include "press/error.h"
#include "press/printers/loader.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>

namespace Press {
namespace {

struct Reading {
  std::optional<Queue> queue;
  std::string failure;
};

void receiveQueue(void* context, const KilnQueue* queue) {
  Queue& read = static_cast<Reading*>(context)->queue.emplace();
  read.isClass = queue->isClass != 0;
  read.isTemporary = queue->isTemporary != 0;
  const std::string reasons = queue->stateReasons;
  read.lacksFilter =
      reasons.find("cups-missing-filter") != reasons.npos || reasons.find("cups-insecure-filter") != reasons.npos;
  if (queue->description != nullptr)
    read.description.emplace(queue->description, static_cast<std::size_t>(queue->size));
}

// Calls work with a file of that content.
void withFile(const std::string& content, const std::function<void(const std::filesystem::path&)>& work) {
  const Files::TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "description.ppd";
  if (!(std::ofstream(file, std::ios::binary) << content << std::flush))
    throw Error(Formats::sentence("{1} cannot be written: see that there is room.", quoted(file)));
  work(file);
}

void keepFailure(void* context, const char* reason) { *static_cast<std::string*>(context) = Formats::sentence(reason); }

}  // namespace

std::optional<Queue> readQueue(const std::string& name) {
  Reading reading;
  const auto fail = [](void* context, const char* reason) {
    static_cast<Reading*>(context)->failure = Formats::sentence(reason);
  };
  if (printerFunctions().readQueue(name.c_str(), &receiveQueue, fail, &reading) == 0)
    throw Error(Formats::sentence("The queue {1} cannot be read ({2}): see that the print service runs.",
                                  Formats::quoted(name), reading.failure));
  return reading.queue;
}

void checkDescription(const std::string& description) {
  withFile(description, [](const std::filesystem::path& file) {
    std::string failure;
    if (printerFunctions().checkDescription(file.c_str(), &keepFailure, &failure) == 0)
      throw Error(Formats::sentence("The print service could not use the description ({1}).", failure));
  });
}

void describeQueue(const std::string& name, const std::string& description) {
  withFile(description, [&](const std::filesystem::path& file) {
    std::string failure;
    if (printerFunctions().describeQueue(name.c_str(), file.c_str(), &keepFailure, &failure) == 0)
      throw Error(Formats::sentence(
          "The print service does not change the queue {1} ({2}): try again as its administrator, with sudo for "
          "example.",
          Formats::quoted(name), failure));
  });
}

}  // namespace Press
