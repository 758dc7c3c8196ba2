// The fonts of this machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace App {

// The names of the installed font faces, each once, in order; nothing when the system does not tell them.
std::optional<std::vector<std::u16string>> installedFonts();

}  // namespace App
