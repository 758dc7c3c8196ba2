// Where a person's own things are when no command line says so.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace App {

// The folder for what the user of this system keeps. Throws std::runtime_error when the system names none.
std::filesystem::path userFolder();

// The same for a user whose home folder is known. Empty when neither the environment names a folder nor `home` is one.
// On POSIX systems alone.
std::filesystem::path dataFolder(const std::filesystem::path& home);

// The one of `locales` that the user wants: the first of the wanted languages that is among them, with its country or
// else with another; "en-US" when none is.
std::string userLocale(const std::vector<std::string>& locales);

// The languages that the system says the user wants, the dearest first: "de-CH", "ja-JP", or "de" alone.
std::vector<std::string> wantedLocales();

}  // namespace App
