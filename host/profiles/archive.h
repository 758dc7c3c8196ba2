// Packs folders into ZIP archives and unpacks them. Archives are untrusted input.
#pragma once

#include "files/disk.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>

namespace Refhost {

// Called periodically with the progress of a long task, in task-specific units; returns false to stop it.
using Progress = std::function<bool(int done, int total)>;

// Thrown by a task that its progress callback has stopped. The task leaves nothing behind.
class Stopped final : public std::exception {
 public:
  const char* what() const noexcept override { return "The task was stopped."; }
};

// The limits of an archive's content, including folders.
struct ArchiveLimits {
  std::size_t entries = 10'000;
  std::uint64_t fileBytes = std::uint64_t{256} << 20;
  std::uint64_t allBytes = std::uint64_t{2} << 30;
};

// Names in an archive are ASCII paths separated by "/", with components that are valid file names on every system.

// Packs all files below `folder` into `file`, which is replaced atomically; equal content gives equal bytes. `first`
// precedes the others, which are sorted by name. Throws std::runtime_error, one sentence, and Stopped; `file` is then
// unchanged.
void pack(Files::Disk& disk, const std::filesystem::path& folder, const std::filesystem::path& first,
          const std::filesystem::path& file, const ArchiveLimits& limits, const Progress& progress);

// Unpacks `file` into `folder`, which must exist and be empty. Throws std::runtime_error, one sentence, and Stopped;
// files already unpacked remain in the folder, and never outside. Rejects links, devices, encrypted entries, names that
// leave the folder or differ only in case, and archives beyond the limits.
void unpack(const std::filesystem::path& file, const std::filesystem::path& folder, const ArchiveLimits& limits,
            const Progress& progress);

}  // namespace Refhost
