// The library kiln-archives, whose two functions are those of archive.h. It is loaded by name when something is packed
// or unpacked, since what it links brings half a dozen libraries more along, which nothing else has a use for.
#pragma once

#include "host/profiles/archive.h"

namespace Refhost {

struct ArchiveFunctions {
  decltype(&pack) packFolder;
  decltype(&unpack) unpackFile;
};

using GetArchiveFunctions = ArchiveFunctions (*)();
inline constexpr const char* archiveFunctionsSymbol = "kilnArchives";

}  // namespace Refhost
