#include "files/product_files.h"

#include "files/module.h"

namespace Files {
namespace {

// The installed file, or the built one where it is not installed. Both are relative to the program's folder.
std::filesystem::path installedOr(const std::filesystem::path& installed, const std::filesystem::path& built) {
  const std::filesystem::path folder = programFolder();
  const std::filesystem::path found = (folder / installed).lexically_normal();
  std::error_code error;
  return std::filesystem::exists(found, error) ? found : (folder / built).lexically_normal();
}

}  // namespace

std::filesystem::path productModule(const std::filesystem::path& name) {
  return installedOr(KILN_MODULES_FROM_PROGRAM / name, name);
}

std::filesystem::path productResources() { return installedOr(KILN_RESOURCES_FROM_PROGRAM, "../share/kiln"); }

}  // namespace Files
