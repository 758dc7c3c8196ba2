#include "files/temporary_folder.h"

#include "files/path_text.h"
#include "files/system_reason.h"
#include "formats/sentences.h"

#include <charconv>
#include <optional>
#include <stdexcept>

namespace Files {
namespace {

namespace fs = std::filesystem;

// The names: .kiln-folder-PROCESS-UNIQUE. No person names a folder so.
constexpr std::string_view folderNameStart = ".kiln-folder-";

// Far longer than it takes to hold a new folder.
constexpr std::chrono::hours longestBeginning{1};

fs::path parentFolder() {
  std::error_code unusable;
  const auto parent = fs::temp_directory_path(unusable);
  if (unusable)
    throw std::runtime_error(Formats::sentence("The folder for temporary files that the environment names (TMPDIR, or "
                                               "TMP on Windows) cannot be used ({1}): name one that is there.",
                                               systemReason(unusable)));
  return parent;
}

// The process id in the name; nothing for other names.
std::optional<long> makerOf(const fs::path& name) {
  const std::string text = shownPath(name);
  std::string_view rest = text;
  if (!rest.starts_with(folderNameStart)) return {};
  rest.remove_prefix(folderNameStart.size());
  long process = 0;
  const auto number = std::from_chars(rest.data(), rest.data() + rest.size(), process);
  rest.remove_prefix(static_cast<std::size_t>(number.ptr - rest.data()));
  return number.ec == std::errc() && process > 0 && rest.size() > 1 && rest.front() == '-' ? std::optional(process)
                                                                                           : std::nullopt;
}

// Process ids are reused.
bool isTooYoung(const fs::path& folder) {
  std::error_code error;
  const auto written = fs::last_write_time(folder, error);
  return error || fs::file_time_type::clock::now() - written < longestBeginning;
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  const auto parent = parentFolder();
  sweepTemporaryFolders(parent);
  std::error_code reason;
  folder = newPrivateFolder(parent, std::string(folderNameStart) + std::to_string(processNumber()) + "-", reason);
  if (reason)
    throw std::runtime_error(
        Formats::sentence("No temporary folder can be made in {1}: {2}.", shownPath(parent), systemReason(reason)));
  hold = holdFolder(folder);
}

TemporaryFolder::~TemporaryFolder() {
  hold.reset();  // some systems cannot remove folders that are open
  std::error_code ignored;
  for (fs::directory_iterator at(folder, ignored), end; at != end; at.increment(ignored))
    fs::remove_all(at->path(), ignored);
  removeEmptyFolder(folder);
}

void sweepTemporaryFolders(const fs::path& parent) {
  std::error_code error;
  for (fs::directory_iterator at(parent, error), end; !error && at != end; at.increment(error)) {
    const fs::path folder = at->path();
    const auto maker = makerOf(folder.filename());
    if (!maker || (processRuns(*maker) && isTooYoung(folder)) || !isOwnAndFree(folder)) continue;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
}

}  // namespace Files
