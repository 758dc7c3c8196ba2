#include "script/portable_text.h"

#include "files/path_text.h"
#include "formats/text.h"

#include <algorithm>
#include <regex>
#include <set>

namespace Script {
namespace {

std::string slashed(std::string path) {
  std::ranges::replace(path, '\\', '/');
  return path;
}

std::string replaceAll(std::string text, std::string_view what, std::string_view by) {
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

}  // namespace

std::string withoutHome(const std::string& text, const std::filesystem::path& home) {
  if (home.empty()) return text;
  const std::string path = Formats::toUtf8(Files::pathText(home));
  std::string result = replaceAll(replaceAll(text, path, homeMark), slashed(path), homeMark);
  for (std::size_t at = result.find(homeMark); at != result.npos; at = result.find(homeMark, at + 1)) {
    const std::size_t end = std::min(result.find_first_of(" \"", at), result.size());
    std::replace(result.begin() + static_cast<std::ptrdiff_t>(at), result.begin() + static_cast<std::ptrdiff_t>(end),
                 '\\', '/');
  }
  return result;
}

std::string withHome(const std::string& text, const std::filesystem::path& home) {
  return replaceAll(text, homeMark, slashed(Formats::toUtf8(Files::pathText(home))));
}

bool isMadeName(const std::string& text) {
  static const std::regex made("WM_[0-9A-F]+(_[0-9A-F]+)+|[0-9]{5}\\.opa");
  return std::regex_match(text, made);
}

std::string MadeNames::numbered(const std::string& text) {
  // An overlay and its thumbnail have the same number.
  static const std::regex made("WM_[0-9A-F]+(_[0-9A-F]+)+|[0-9]{5}(?=\\.(opa|bmp))");
  std::string result;
  auto from = text.cbegin();
  for (std::sregex_iterator each(text.begin(), text.end(), made), end; each != end; ++each) {
    result.append(from, (*each)[0].first);
    result += "{made " + std::to_string(numbers.try_emplace(each->str(), numbers.size() + 1).first->second) + '}';
    from = (*each)[0].second;
  }
  return result.append(from, text.cend());
}

}  // namespace Script
