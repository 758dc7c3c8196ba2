#include "app/system/user.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace App {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
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
    throw std::runtime_error("The environment names no folder for your data; name one with --home DIR.");
  return folder;
}

// "de-CH" from "de_CH.UTF-8@euro".
std::vector<std::string> wantedLocales() {
  std::string wanted;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (wanted.empty()) wanted = environment(name);
  wanted.resize(std::min(wanted.find_first_of(".@"), wanted.size()));
  std::ranges::replace(wanted, '_', '-');
  return {wanted};
}

}  // namespace App
