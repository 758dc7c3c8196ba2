// The file that the driver captures the current job into, as the property OverlayDestFileName names it.
#pragma once

#include "host/documents/disk.h"
#include "host/model/properties.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// What the plug-in removes there is put back as soon as the job is cancelled, or goes elsewhere; when the process dies
// before, when the folder is opened next.
class JobDestination {
 public:
  // Both outlive the destination.
  JobDestination(Disk& fileDisk, PropertyModel& properties);
  JobDestination(const JobDestination&) = delete;
  JobDestination& operator=(const JobDestination&) = delete;

  // Whether a file that the plug-in is about to remove is the destination. From then on it counts as set aside.
  bool takesPlaceOf(const std::filesystem::path& file);

  // Writes the captured job, and the picture of its first page where the driver makes one. Throws std::runtime_error,
  // one sentence, where there is no destination, and DiskError.
  void write(std::string_view bytes, std::optional<std::string_view> picture);

 private:
  std::u16string named() const;
  void follow();

  Disk& disk;
  PropertyModel& model;
  std::u16string aside;  // the destination that was set aside; empty for none
};

}  // namespace Refhost
