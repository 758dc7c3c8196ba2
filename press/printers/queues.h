// The queues of the system's print service, and the descriptions of their printers (PPD).
#pragma once

#include <optional>
#include <string>

namespace Press {

struct Queue {
  bool isClass = false;      // of several queues
  bool isTemporary = false;  // made by the service while the printer can be seen
  bool lacksFilter = false;  // a filter of the description is missing, or others may change it
  std::optional<std::string> description;
};

// Nothing when there is no such queue. Throws Error when the service cannot be asked.
std::optional<Queue> readQueue(const std::string& name);

// Throws Error when the service could not print with the description.
void checkDescription(const std::string& description);

// Gives the queue another description, as a whole. Throws Error when it has the old one still.
void describeQueue(const std::string& name, const std::string& description);

}  // namespace Press
