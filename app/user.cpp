#include "app/user.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace App {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

// "de-CH" of "de_CH.UTF-8@euro".
std::string wantedLocale() {
  std::string wanted;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (wanted.empty()) wanted = environment(name);
  wanted.resize(std::min(wanted.find_first_of(".@"), wanted.size()));
  std::ranges::replace(wanted, '_', '-');
  return wanted;
}

}  // namespace

std::filesystem::path userFolder() {
  const std::filesystem::path data = environment("XDG_DATA_HOME");
  if (data.is_absolute()) return data / "kiln";
  const std::filesystem::path home = environment("HOME");
  if (home.is_absolute()) return home / ".local" / "share" / "kiln";
  throw std::runtime_error("The environment names no folder for your data; name one with --home DIR.");
}

std::string userLocale(const std::vector<std::string>& locales) {
  std::string wanted = wantedLocale();
  // Where Chinese is written in traditional characters.
  if (wanted == "zh-HK" || wanted == "zh-MO") wanted = "zh-TW";
  if (std::ranges::find(locales, wanted) != locales.end()) return wanted;
  const std::string language = wanted.substr(0, wanted.find('-')) + '-';
  const auto alike = std::ranges::find_if(locales, [&](const std::string& name) { return name.starts_with(language); });
  return alike == locales.end() ? "en-US" : *alike;
}

}  // namespace App
