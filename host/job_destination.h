// The file that the driver captures the current job to: the value of OverlayDestFileName.
#pragma once

#include "host/documents/path.h"
#include "host/model/properties.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace Refhost {

// A file that the plug-in removes there is restored when the job is cancelled or gets another destination. While
// another program keeps the home's lock, it stays set aside: until the next change of a property or the end, and after
// a crash until the folder is opened next.
class JobDestination {
 public:
  // Both outlive the object.
  JobDestination(const FileWorld& fileWorld, PropertyModel& properties);
  ~JobDestination();
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
  void giveUp();
  void restore(std::chrono::milliseconds atMost);
  void keepListed(const std::filesystem::path& file) const;
  FileContent contentBefore(const std::filesystem::path& file) const;

  const FileWorld& world;
  PropertyModel& model;
  std::u16string aside;                // the destination that was set aside; empty for none
  std::set<std::u16string> toRestore;  // what was set aside for jobs that do not come
  std::u16string followed;             // the destination at the last change
  std::u16string overlay;              // the overlay's name when the destination was prepared
};

}  // namespace Refhost
