// Converts file errors to plug-in exceptions.
#pragma once

#include "files/disk.h"
#include "host/object.h"

namespace Refhost {

// Runs disk operations for a plug-in. Throws Exception for a Files::DiskError.
template <class Work>
decltype(auto) forPlugin(const Work& work) {
  try {
    return work();
  } catch (const Files::DiskError& error) {
    throw failure(error.what());
  }
}

}  // namespace Refhost
