#include "files/layered_folder.h"

#include <map>
#include <system_error>

namespace Files {

namespace fs = std::filesystem;

LayeredFolder LayeredFolder::operator/(const fs::path& name) const {
  std::vector<fs::path> inner;
  for (const fs::path& folder : folders) inner.push_back(folder / name);
  return LayeredFolder(std::move(inner));
}

fs::path LayeredFolder::find(const fs::path& name) const {
  std::error_code error;
  for (const fs::path& folder : folders)
    if (fs::exists(folder / name, error)) return folder / name;
  return folders.front() / name;
}

std::vector<fs::path> LayeredFolder::entries() const {
  std::map<fs::path, fs::path> byName;
  std::error_code error;
  for (const fs::path& folder : folders)
    for (const auto& entry : fs::directory_iterator(folder, error))
      byName.emplace(entry.path().filename(), entry.path());
  std::vector<fs::path> paths;
  for (const auto& [name, path] : byName) paths.push_back(path);
  return paths;
}

}  // namespace Files
