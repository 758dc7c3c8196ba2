#include "host/chrome/addresses.h"

#include "formats/text.h"

#include <algorithm>
#include <string_view>

namespace Refhost {

using namespace std::string_view_literals;

std::optional<std::filesystem::path> ChromeFolders::file(std::u16string_view address) const {
  constexpr std::u16string_view scheme = u"chrome://";
  if (!address.starts_with(scheme)) return {};
  address.remove_prefix(scheme.size());
  std::filesystem::path file;
  while (!address.empty()) {
    const auto part = address.substr(0, address.find(u'/'));
    address.remove_prefix(std::min(address.size(), part.size() + 1));
    const bool leaves = part.empty() || part == u"." || part == u".." || part.find_first_of(u"\\:\0"sv) != part.npos;
    if (leaves) return {};
    file /= std::filesystem::path(part);
  }
  return roots.find(file);
}

std::vector<std::string> ChromeFolders::packages() const {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& package : roots.entries())
    if (std::filesystem::is_directory(roots.find(package.filename() / "content"), error))
      names.push_back(Formats::toUtf8(package.filename().u16string()));
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> ChromeFolders::locales(std::string_view package) const {
  std::vector<std::string> names;
  std::error_code error;
  const auto content = roots / Formats::toUtf16(package) / "content";
  for (const auto& locale : content.entries())
    if (std::filesystem::is_regular_file(content.find(locale.filename() / "strings.dtd"), error))
      names.push_back(Formats::toUtf8(locale.filename().u16string()));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace Refhost
