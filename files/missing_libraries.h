// Why a library does not load on Windows: the system does not tell which other library is missing.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Files {

// The file names of the libraries that a library needs, itself or through others, and that are not found.
std::vector<std::string> missingLibraries(const std::filesystem::path& library);

}  // namespace Files
