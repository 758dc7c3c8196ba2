// Names that Windows does not keep as they are given, or that stand for something else than a file.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// Why a part of a path ("." and ".." apart) can be no file's or folder's name on Windows, as the end of a sentence;
// empty when it can.
std::string windowsNameProblem(std::u16string_view name);

}  // namespace Refhost
