// The library kiln-archives, which implements the functions of archive.h. It is loaded when needed, since it links half
// a dozen libraries that nothing else uses.
#pragma once

#include "formats/sentences.h"
#include "host/profiles/archive.h"

namespace Refhost {

struct ArchiveFunctions {
  decltype(&pack) packFolder;
  decltype(&unpack) unpackFile;
};

// The library speaks the language of its program from then on.
using GetArchiveFunctions = ArchiveFunctions(Formats::Language& language);
inline constexpr const char* archiveFunctionsSymbol = "kilnArchives";

}  // namespace Refhost
