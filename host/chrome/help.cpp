#include "host/chrome/help.h"

#include "files/disk.h"
#include "formats/text.h"

#include <algorithm>
#include <filesystem>

namespace Refhost {
namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 20;

std::string escaped(std::string_view text) {
  std::string html;
  for (const char unit : text) {
    if (unit == '&')
      html += "&amp;";
    else if (unit == '<')
      html += "&lt;";
    else
      html += unit;
  }
  return html;
}

}  // namespace

std::u16string_view labelAsText(std::u16string_view label) {
  constexpr std::u16string_view dots = u"...";
  if (label.ends_with(dots)) label.remove_suffix(dots.size());
  const bool hasKey = label.size() > 3 && label.ends_with(u')') && label[label.size() - 3] == u'(';
  if (hasKey) label.remove_suffix(3);
  return label;
}

std::u16string helpPage(const ChromeFolders& chrome, const std::string& locale, std::u16string_view url,
                        std::u16string_view topic) {
  constexpr std::u16string_view languageFolder = u"/locale/";
  constexpr std::u16string_view ending = u".chm";
  std::u16string page(url);
  const auto place = page.find(languageFolder);
  if (place == page.npos || !page.ends_with(ending)) return page;
  page.resize(page.size() - ending.size());
  page.append(u"/").append(topic).append(u".html");
  const auto in = [&](const std::u16string& folder) {
    std::u16string address = page;
    return address.replace(place, languageFolder.size(), folder);
  };
  std::u16string own = in(u"/content/" + Formats::toUtf16(locale) + u"/");
  const auto isThere = [&chrome](const std::u16string& address) {
    std::error_code problem;
    const auto file = chrome.file(address);
    return file && std::filesystem::is_regular_file(*file, problem);
  };
  for (const std::u16string& address :
       {own, in(u"/content/"), in(u"/content/" + Formats::toUtf16(fallbackLocale) + u"/")})
    if (isThere(address)) return address;
  return own;
}

std::optional<std::string> readHelp(const ChromeFolders& chrome, const StringTables& strings, std::u16string_view url) {
  constexpr std::string_view start = "$IDS_";
  const auto file = chrome.file(url);
  if (!file) return {};
  std::string page;
  try {
    page = Files::realDisk().read(*file, mostBytes);
  } catch (const Files::DiskError&) {
    return {};
  }
  std::string_view rest = page;
  std::string html;
  for (std::size_t place = 0; (place = rest.find(start)) != rest.npos;) {
    html += rest.substr(0, place);
    rest.remove_prefix(place);
    const std::size_t length = std::min(rest.find(';'), rest.size() - 1) + 1;
    const std::u16string text = strings.resolve(Formats::toUtf16(rest.substr(0, length)));
    html += escaped(Formats::toUtf8(labelAsText(text)));
    rest.remove_prefix(length);
  }
  return html.append(rest);
}

}  // namespace Refhost
