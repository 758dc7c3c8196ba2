#include "app/system/user.h"
#include "formats/sentences.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace App {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string localeName(std::string text) {
  text.resize(std::min(text.find_first_of(".@"), text.size()));
  std::ranges::replace(text, '_', '-');
  return text;
}

// Whether the locale is the system's own, which no language belongs to.
bool isNeutral(const std::string& text) {
  const std::string name = localeName(text);
  return name.empty() || name == "C" || name == "POSIX";
}

}  // namespace

std::filesystem::path dataFolder(const std::filesystem::path& home) {
  const std::filesystem::path data = environment("XDG_DATA_HOME");
  if (data.is_absolute()) return data / "kiln";
  return home.is_absolute() ? home / ".local" / "share" / "kiln" : std::filesystem::path();
}

std::filesystem::path userFolder() {
  const std::filesystem::path folder = dataFolder(environment("HOME"));
  if (folder.empty())
    throw std::runtime_error(
        Formats::sentence("The environment names no folder for your data; name one with --home DIR."));
  return folder;
}

// "de-CH" from "de_CH.UTF-8@euro".
std::string sharedMarksFolder() { return "/etc/kiln/marks"; }

std::vector<std::string> wantedLocales() {
  std::string wanted;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (wanted.empty()) wanted = environment(name);
  std::vector<std::string> locales;
  // The list of languages counts where a language is wanted at all.
  if (std::string list = environment("LANGUAGE"); !list.empty() && !isNeutral(wanted))
    for (list += ':'; !list.empty(); list.erase(0, list.find(':') + 1))
      locales.push_back(localeName(list.substr(0, list.find(':'))));
  locales.push_back(localeName(wanted));
  return locales;
}

}  // namespace App
