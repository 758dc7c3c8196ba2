// The journal of an import into a home.
#pragma once

#include <filesystem>

namespace Refhost {

inline std::filesystem::path importJournal(const std::filesystem::path& home) { return home / "import.journal"; }

}  // namespace Refhost
