#include "files/language.h"

#include "files/disk.h"
#include "files/product_files.h"
#include "formats/sentences.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace Files {
namespace {

constexpr const char* ending = ".po";
constexpr const char* english = "en-US";
constexpr std::size_t mostBytes = 1 << 20;

std::filesystem::path folder() { return productResources() / "sentences"; }

// The locale may come from the environment, and must name nothing outside of the folder.
bool isLocale(const std::string& name) {
  return !name.empty() && std::ranges::all_of(name, [](char unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9') || unit == '-';
  });
}

std::string catalogueOf(const std::string& locale) {
  try {
    return realDisk().read(folder() / (locale + ending), mostBytes);
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace

void speak(const std::string& locale) {
  if (locale == english || !isLocale(locale)) return Formats::language().speak({});
  Formats::language().speak([locale] { return catalogueOf(locale); });
}

std::vector<std::string> spokenLocales() {
  std::vector<std::string> locales = {english};
  std::error_code error;
  for (std::filesystem::directory_iterator each(folder(), error), end; !error && each != end; each.increment(error))
    if (each->path().extension() == ending) locales.push_back(each->path().stem().string());
  std::ranges::sort(locales);
  return locales;
}

}  // namespace Files
