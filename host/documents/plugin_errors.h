// Failures of files, as plug-ins are told of them.
#pragma once

#include "host/documents/disk.h"
#include "host/object.h"

namespace Refhost {

// Runs work on a disk for a plug-in. Throws Exception where the work throws DiskError.
template <class Work>
decltype(auto) forPlugin(const Work& work) {
  try {
    return work();
  } catch (const DiskError& error) {
    throw failure(error.what());
  }
}

}  // namespace Refhost
