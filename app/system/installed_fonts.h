// The fonts of this machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace App {

// The sorted, unique names of the installed font faces; nothing when the system does not provide them.
std::optional<std::vector<std::u16string>> installedFonts();

}  // namespace App
