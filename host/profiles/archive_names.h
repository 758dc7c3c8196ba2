// The names of files in an archive, which has to be unpacked on any system.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// Why a name cannot be that of a file or folder in an archive, as the end of a sentence; empty when it can. A folder's
// may end with "/".
std::string archiveNameProblem(std::string_view name);

// The same for all names that differ only in case.
std::string withoutCase(std::string_view name);

}  // namespace Refhost
