// The functions that a library's file exports.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Checking {

// The exported names of a 64-bit library of this system, in the order of its file; "#N" for one that has only a number.
// Throws std::runtime_error, one sentence, when the file is none.
std::vector<std::string> exportsOf(const std::filesystem::path& library);

}  // namespace Checking
