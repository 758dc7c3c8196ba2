// The library kiln-archives, which implements the functions of archive.h. It is loaded when needed, since it links half
// a dozen libraries that nothing else uses.
#pragma once

#include "host/profiles/archive.h"

namespace Refhost {

struct ArchiveFunctions {
  decltype(&pack) packFolder;
  decltype(&unpack) unpackFile;
};

using GetArchiveFunctions = ArchiveFunctions();
inline constexpr const char* archiveFunctionsSymbol = "kilnArchives";

}  // namespace Refhost
