// Folders packed into one file, a ZIP archive, and unpacked again. Archives come from anywhere, so nothing of one is
// believed.
#pragma once

#include "host/documents/disk.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>

namespace Refhost {

// Told now and then how far a long task is, in a unit of the task's own; gives false to stop it.
using Progress = std::function<bool(int done, int total)>;

// What a task throws that its progress has stopped. Nothing of it is left.
class Stopped final : public std::exception {
 public:
  const char* what() const noexcept override { return "The task was stopped."; }
};

// The most that an archive may hold, folders included.
struct ArchiveLimits {
  std::size_t entries = 10'000;
  std::uint64_t fileBytes = std::uint64_t{256} << 20;
  std::uint64_t allBytes = std::uint64_t{2} << 30;
};

// Names in an archive are paths of ASCII characters, with "/" between parts that are plain names on every system.

// Packs all files below `folder` into `file`, which is replaced whole; the same content gives the same bytes. `first`
// goes before the others, which are in the order of their names. Throws std::runtime_error, one sentence, and Stopped;
// `file` is as it was then.
void pack(Disk& disk, const std::filesystem::path& folder, const std::filesystem::path& first,
          const std::filesystem::path& file, const ArchiveLimits& limits, const Progress& progress);

// Unpacks `file` into `folder`, which is there and empty. Throws std::runtime_error, one sentence, and Stopped; what
// has been unpacked by then is in the folder, and nothing is outside. Refused are links, devices, what is encrypted,
// names that lead out of the folder or differ only in case, and more than the limits.
void unpack(const std::filesystem::path& file, const std::filesystem::path& folder, const ArchiveLimits& limits,
            const Progress& progress);

}  // namespace Refhost
