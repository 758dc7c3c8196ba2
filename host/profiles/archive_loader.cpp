#include "host/library.h"
#include "host/profiles/archive_module.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace Refhost {
namespace {

// The library is never unloaded.
const ArchiveFunctions& archives() {
  static const ArchiveFunctions functions = [] {
    const auto file = programFolder() / "kiln-archives.so";
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = library != nullptr ? dlsym(library, archiveFunctionsSymbol) : nullptr;
    if (function == nullptr)
      throw std::runtime_error("Profiles cannot be read or written (" + std::string(dlerror()) +
                               "): install the program again, all of its files in one folder.");
    return reinterpret_cast<GetArchiveFunctions>(function)();
  }();
  return functions;
}

}  // namespace

void pack(Disk& disk, const std::filesystem::path& folder, const std::filesystem::path& first,
          const std::filesystem::path& file, const ArchiveLimits& limits, const Progress& progress) {
  archives().packFolder(disk, folder, first, file, limits, progress);
}

void unpack(const std::filesystem::path& file, const std::filesystem::path& folder, const ArchiveLimits& limits,
            const Progress& progress) {
  archives().unpackFile(file, folder, limits, progress);
}

}  // namespace Refhost
