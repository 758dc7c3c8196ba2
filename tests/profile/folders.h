// Temporary folders for tests, and their content.
#pragma once

#include "files/home_lock.h"
#include "files/temporary_folder.h"
#include "tests/support/host_world.h"

#include <filesystem>
#include <map>
#include <string>

namespace Testing {

// All files below a folder but a home's lock: their content by relative path; folders have a trailing "/".
using Tree = std::map<std::string, std::string>;

inline Tree treeOf(const std::filesystem::path& folder) {
  Tree tree;
  if (!std::filesystem::exists(folder)) return tree;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).generic_string();
    if (entry.is_directory())
      tree[name + "/"] = "";
    else if (name != Files::homeLockName)
      tree[name] = bytesOf(entry.path());
  }
  return tree;
}

inline void put(const std::filesystem::path& file, std::string_view bytes) {
  std::filesystem::create_directories(file.parent_path());
  writeFile(file, bytes);
}

}  // namespace Testing
