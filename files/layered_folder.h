// Several folders as one.
#pragma once

#include <filesystem>
#include <type_traits>
#include <utility>
#include <vector>

namespace Files {

// Of files with the same name, the one in the first folder that has it counts.
class LayeredFolder {
 public:
  // A single folder converts, since that is what nearly every caller has.
  template <class Folder, class = std::enable_if_t<std::is_convertible_v<const Folder&, std::filesystem::path>>>
  LayeredFolder(const Folder& only) : folders{std::filesystem::path(only)} {}

  // `inOrder` has at least one folder.
  explicit LayeredFolder(std::vector<std::filesystem::path> inOrder) : folders(std::move(inOrder)) {}
  LayeredFolder() : LayeredFolder(std::filesystem::path()) {}

  // The folder `name` inside each.
  LayeredFolder operator/(const std::filesystem::path& name) const;

  // The path of a file or folder; in the first folder when none has it.
  std::filesystem::path find(const std::filesystem::path& name) const;

  // The paths of all files and folders that count, sorted by name. A folder that cannot be listed has none.
  std::vector<std::filesystem::path> entries() const;

 private:
  std::vector<std::filesystem::path> folders;
};

}  // namespace Files
