#include "host/profiles/archive_names.h"

#include "files/windows_names.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>

namespace Refhost {
namespace {

// Short enough that folder and name stay below every system's path limit.
constexpr std::size_t longestName = 200;

constexpr bool isPlain(char unit) { return unit >= ' ' && unit <= '~'; }

}  // namespace

std::string archiveNameProblem(std::string_view name) {
  if (name.empty()) return Formats::sentence("it has no name.");
  if (name.size() > longestName) return Formats::sentence("its name is too long.");
  if (!std::all_of(name.begin(), name.end(), isPlain))
    return Formats::sentence("its name has characters that are not ASCII.");
  if (name.ends_with('/')) name.remove_suffix(1);
  for (;;) {
    const std::string_view part = name.substr(0, name.find('/'));
    if (part.empty()) return Formats::sentence("its name is an absolute path, or has an empty part.");
    if (part == "." || part == "..") return Formats::sentence("its name leads to another folder.");
    if (std::string problem = Files::windowsNameProblem(Formats::toUtf16(part)); !problem.empty()) return problem;
    if (part.size() == name.size()) return {};
    name.remove_prefix(part.size() + 1);
  }
}

std::string withoutCase(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(),
                 [](char unit) { return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit; });
  return folded;
}

}  // namespace Refhost
