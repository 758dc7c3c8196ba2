// The product's own files that programs load at run time. They are found relative to the program: where they are
// installed, or where the build leaves them.
#pragma once

#include <filesystem>

namespace Files {

// A library of the product, by its file name. It need not exist. Throws as programFolder.
std::filesystem::path productModule(const std::filesystem::path& name);

// The folder of the packages and models. It need not exist. Throws as programFolder.
std::filesystem::path productResources();

}  // namespace Files
