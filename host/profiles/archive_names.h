// File names in archives, which must unpack on every system.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// Why a name cannot be a file or folder name in an archive, as the end of a sentence; empty when it can. A folder's
// name may end with "/".
std::string archiveNameProblem(std::string_view name);

// Equal for names that differ only in case.
std::string withoutCase(std::string_view name);

}  // namespace Refhost
