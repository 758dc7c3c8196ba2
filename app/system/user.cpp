#include "app/system/user.h"

#include <algorithm>

namespace App {
namespace {

// The best match in `locales` for the wanted one; empty when there is none.
std::string servingLocale(const std::vector<std::string>& locales, std::string wanted) {
  // Regions with traditional Chinese characters.
  if (wanted == "zh-HK" || wanted == "zh-MO") wanted = "zh-TW";
  if (std::ranges::find(locales, wanted) != locales.end()) return wanted;
  const std::string language = wanted.substr(0, wanted.find('-')) + '-';
  const auto alike = std::ranges::find_if(locales, [&](const std::string& name) { return name.starts_with(language); });
  return alike == locales.end() ? std::string() : *alike;
}

}  // namespace

std::string userLocale(const std::vector<std::string>& locales) {
  for (const std::string& wanted : wantedLocales()) {
    const std::string serving = servingLocale(locales, wanted);
    if (!serving.empty()) return serving;
  }
  return "en-US";
}

}  // namespace App
