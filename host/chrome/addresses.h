// chrome:// addresses: chrome://PACKAGE/PATH is the file PATH in the package's folder.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// The packages' folders below `root`, one each ("base", "effect", "window").
class ChromeFolders {
 public:
  explicit ChromeFolders(std::filesystem::path rootFolder) : root(std::move(rootFolder)) {}

  // The file of an address; nothing for a text that is not a chrome:// address or that escapes its package.
  std::optional<std::filesystem::path> file(std::u16string_view address) const;

  // The packages, sorted; and the locales of one, sorted: the folders of its content that contain a strings.dtd.
  std::vector<std::string> packages() const;
  std::vector<std::string> locales(std::string_view package) const;

 private:
  std::filesystem::path root;
};

}  // namespace Refhost
