#include "files/disk.h"
#include "files/system_reason.h"

namespace Files {
namespace {

// The reason, and advice if there is any.
std::string sentenceEnd(std::string_view action, std::error_code reason) {
  if (reason == std::errc::no_space_on_device) return "the disk is full; free some space and try again.";
  if (reason == std::errc::read_only_file_system)
    return "the disk is write-protected; allow writing to it and try again.";
  if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted)
    return "this user has no permission; change the permissions of the file or its folder and try again.";
  if (reason == std::errc::no_such_file_or_directory) return "there is no such file or folder.";
  if (reason == std::errc::is_a_directory) return "it is a folder.";
  if (reason == std::errc::not_a_directory) return "a part of its path is no folder.";
  if (reason == std::errc::file_too_large && action == "read") return "it is larger than this host reads.";
  return systemReason(reason) + ".";
}

}  // namespace

DiskError::DiskError(const std::filesystem::path& path, std::string_view action, std::error_code reason)
    : DiskError(shownPath(path) + " cannot be " + std::string(action) + ": " + sentenceEnd(action, reason)) {
  systemCode = reason;
}

}  // namespace Files
