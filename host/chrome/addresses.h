// chrome:// addresses: chrome://PACKAGE/PATH is the file PATH in the package's folder.
#pragma once

#include "files/layered_folder.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// The packages' folders below the root folders, one each ("base", "effect", "window").
class ChromeFolders {
 public:
  explicit ChromeFolders(Files::LayeredFolder rootFolders) : roots(std::move(rootFolders)) {}

  // The file of an address, which need not exist; nothing for a text that is not a chrome:// address or that escapes
  // its package.
  std::optional<std::filesystem::path> file(std::u16string_view address) const;

  // The packages, sorted; and the locales of one, sorted: the folders of its content that contain a strings.dtd.
  std::vector<std::string> packages() const;
  std::vector<std::string> locales(std::string_view package) const;

 private:
  Files::LayeredFolder roots;
};

}  // namespace Refhost
