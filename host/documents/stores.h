// Backing stores for plug-ins.
#pragma once

#include "host/documents/path.h"

namespace Refhost {

// The maximum number of bytes that a store reads.
inline constexpr std::size_t storeLimit = std::size_t{64} << 20;

// A store on a file; each commit replaces the file and is traced if the content changed. The folder must exist. `world`
// outlives the store. Throws Exception when `path` is not one of this host's.
Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> fileStore(const FileWorld& world,
                                                             Kiln::SmartPtr<Kiln::Services::Path> path);

// A read-only store on a file that ships with the program; commit throws Exception.
Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resourceStore(std::filesystem::path file);

// A store that holds its bytes in memory.
Kiln::SmartPtr<Kiln::Services::BackingStoreIO> memoryStore(std::string bytes = {});

}  // namespace Refhost
