#include "files/disk.h"
#include "files/system_reason.h"
#include "formats/sentences.h"

namespace Files {
namespace {

// The reason, and advice if there is any.
std::string sentenceEnd(std::string_view action, std::error_code reason) {
  if (reason == std::errc::no_space_on_device)
    return Formats::sentence("the disk is full; free some space and try again.");
  if (reason == std::errc::read_only_file_system)
    return Formats::sentence("the disk is write-protected; allow writing to it and try again.");
  if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted)
    return Formats::sentence(
        "this user has no permission; change the permissions of the file or its folder and try again.");
  if (reason == std::errc::no_such_file_or_directory) return Formats::sentence("there is no such file or folder.");
  if (reason == std::errc::is_a_directory) return Formats::sentence("it is a folder.");
  if (reason == std::errc::not_a_directory) return Formats::sentence("a part of its path is no folder.");
  if (reason == std::errc::file_too_large && action == "read")
    return Formats::sentence("it is larger than this host reads.");
  return systemReason(reason) + ".";
}

// The sentences of the actions.
[[maybe_unused]] constexpr std::string_view failures[] = {
    Formats::sentenceTemplate("{1} cannot be created: {2}"),
    Formats::sentenceTemplate("{1} cannot be deleted: {2}"),
    Formats::sentenceTemplate("{1} cannot be examined: {2}"),
    Formats::sentenceTemplate("{1} cannot be flushed to the disk: {2}"),
    Formats::sentenceTemplate("{1} cannot be followed: {2}"),
    Formats::sentenceTemplate("{1} cannot be listed: {2}"),
    Formats::sentenceTemplate("{1} cannot be locked: {2}"),
    Formats::sentenceTemplate("{1} cannot be read: {2}"),
    Formats::sentenceTemplate("{1} cannot be written: {2}"),
};

}  // namespace

std::string cannotBe(std::string_view action, const std::filesystem::path& path, const std::string& reason) {
  const std::string english = "{1} cannot be " + std::string(action) + ": {2}";
  return Formats::sentence(english, shownPath(path), reason);
}

DiskError::DiskError(const std::filesystem::path& path, std::string_view action, std::error_code reason)
    : DiskError(cannotBe(action, path, sentenceEnd(action, reason))) {
  systemCode = reason;
}

}  // namespace Files
