#include "files/module.h"
#include "files/path_text.h"
#include "files/product_files.h"
#include "formats/sentences.h"
#include "host/profiles/archive_module.h"

#include <stdexcept>
#include <string>

namespace Refhost {
namespace {

ArchiveFunctions load() {
  const std::filesystem::path file = Files::productModule("kiln-archives.so");
  std::string reason;
  try {
    Files::Module library(file);
    library.keepLoaded();
    if (auto* function = library.function<GetArchiveFunctions>(archiveFunctionsSymbol))
      return function(Formats::language());
    reason = Formats::sentence("it exports no {1}", archiveFunctionsSymbol);
  } catch (const std::runtime_error& problem) {
    reason = problem.what();
  }
  throw std::runtime_error(Formats::sentence("Profiles cannot be read or written, since {1} cannot be loaded ({2}): "
                                             "install the program again, with all of its files.",
                                             Files::shownPath(file), reason));
}

const ArchiveFunctions& archives() {
  static const ArchiveFunctions functions = load();
  return functions;
}

}  // namespace

void pack(Files::Disk& disk, const std::filesystem::path& folder, const std::filesystem::path& first,
          const std::filesystem::path& file, const ArchiveLimits& limits, const Progress& progress) {
  archives().packFolder(disk, folder, first, file, limits, progress);
}

void unpack(const std::filesystem::path& file, const std::filesystem::path& folder, const ArchiveLimits& limits,
            const Progress& progress) {
  archives().unpackFile(file, folder, limits, progress);
}

}  // namespace Refhost
