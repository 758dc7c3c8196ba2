// Default locations of data.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace App {

// The data folder of the current user. Throws std::runtime_error when the system has none.
std::filesystem::path userFolder();

// The same for a user with this home folder. Empty when neither the environment nor `home` gives a folder. POSIX only.
std::filesystem::path dataFolder(const std::filesystem::path& home);

// Where an administrator provides marks for every user; empty on systems without a place that only administrators may
// change.
std::string sharedMarksFolder();

// The user's locale among `locales`: the first preferred language that is available, with the same country if possible;
// "en-US" when none is.
std::string userLocale(const std::vector<std::string>& locales);

// The user's preferred locales, in order of preference: "de-CH", "ja-JP", or "de" alone.
std::vector<std::string> wantedLocales();

}  // namespace App
