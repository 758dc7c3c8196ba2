// Names that Windows changes or reserves.
#pragma once

#include <string>
#include <string_view>

namespace Files {

// Why Windows does not accept a path component (other than "." and "..") as a file or folder name, as the end of a
// sentence; empty when it does.
std::string windowsNameProblem(std::u16string_view name);

}  // namespace Files
