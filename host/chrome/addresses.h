// chrome:// addresses: chrome://PACKAGE/PATH names the file PATH of a package's folder.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// Where the packages lie: below `root`, one folder each ("base", "effect", "window").
class ChromeFolders {
 public:
  explicit ChromeFolders(std::filesystem::path rootFolder) : root(std::move(rootFolder)) {}

  // The file that an address names; nothing for a text that is no chrome:// address or that would leave its package.
  std::optional<std::filesystem::path> file(std::u16string_view address) const;

  // The packages, in order, and the locales of one: the folders of its content that hold a strings.dtd, in order.
  std::vector<std::string> packages() const;
  std::vector<std::string> locales(std::string_view package) const;

 private:
  std::filesystem::path root;
};

}  // namespace Refhost
