// Where a person's own things are when no command line says so.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace App {

// The folder for what the user of this system keeps. Throws std::runtime_error when the environment names none.
std::filesystem::path userFolder();

// The one of `locales` that the environment asks for, by language and country, else by language; "en-US" when it asks
// for none of them.
std::string userLocale(const std::vector<std::string>& locales);

}  // namespace App
