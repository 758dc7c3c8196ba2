// The file that the driver captures the current job to: the value of OverlayDestFileName.
#pragma once

#include "host/documents/path.h"
#include "host/model/properties.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// A file that the plug-in removes there is restored when the job is cancelled or gets another destination; after a
// crash, when the folder is opened next.
class JobDestination {
 public:
  // Both outlive the object.
  JobDestination(const FileWorld& fileWorld, PropertyModel& properties);
  JobDestination(const JobDestination&) = delete;
  JobDestination& operator=(const JobDestination&) = delete;

  // Whether a file that the plug-in is about to remove is the destination. If so, it is treated as set aside from now
  // on.
  bool takesPlaceOf(const std::filesystem::path& file);

  // Writes the captured job, and the picture of its first page if there is one. Throws std::runtime_error, one
  // sentence, when there is no destination, and Files::DiskError.
  void write(std::string_view bytes, std::optional<std::string_view> picture);

 private:
  std::u16string named() const;
  void follow();
  void keepListed(const std::filesystem::path& file) const;

  const FileWorld& world;
  PropertyModel& model;
  std::u16string aside;     // the destination that was set aside; empty for none
  std::u16string followed;  // the destination at the last change
  std::u16string overlay;   // the overlay's name when the destination was prepared
};

}  // namespace Refhost
