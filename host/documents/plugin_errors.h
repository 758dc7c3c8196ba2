// Converts file errors to plug-in exceptions.
#pragma once

#include "host/documents/path.h"
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

// The same for looking at `path` or reading it; also tells the world.
template <class Work>
decltype(auto) readForPlugin(const FileWorld& world, const std::filesystem::path& path, const Work& work) {
  return forPlugin([&]() -> decltype(auto) {
    try {
      return work();
    } catch (const Files::DiskError& error) {
      if (world.onUnread) world.onUnread(path, error);
      throw;
    }
  });
}

}  // namespace Refhost
