// The fonts of this machine.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace App {

// The sorted, unique names of the installed font faces; nothing when the system does not provide them.
std::optional<std::vector<std::u16string>> installedFonts();

// The folders of the fonts, and the files elsewhere that links in them lead to. POSIX only.
std::vector<std::filesystem::path> fontPlaces();

}  // namespace App
