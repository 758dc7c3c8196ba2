// Converts file errors to plug-in exceptions.
#pragma once

#include "host/documents/disk.h"
#include "host/object.h"

namespace Refhost {

// Runs disk operations for a plug-in. Throws Exception for a DiskError.
template <class Work>
decltype(auto) forPlugin(const Work& work) {
  try {
    return work();
  } catch (const DiskError& error) {
    throw failure(error.what());
  }
}

}  // namespace Refhost
