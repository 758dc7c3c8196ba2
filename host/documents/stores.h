// Backing stores: bytes that plug-ins read and save.
#pragma once

#include "host/documents/path.h"

namespace Refhost {

// The most bytes that a store reads.
inline constexpr std::size_t storeLimit = std::size_t{64} << 20;

// A store on a file, which is replaced whole by each commit and traced when it was. The folder must exist. `world`
// outlives the store. Throws Exception when `path` is not one of this host's.
Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> fileStore(const FileWorld& world,
                                                             Kiln::SmartPtr<Kiln::Services::Path> path);

// A store on a file that came with the program; it is never written: commit throws Exception.
Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resourceStore(std::filesystem::path file);

// A store that holds its bytes in memory.
Kiln::SmartPtr<Kiln::Services::BackingStoreIO> memoryStore(std::string bytes = {});

}  // namespace Refhost
