// The manual pages of kiln and its commands, made of what the commands declare for their help.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>

namespace App {

// Writes kiln.1 and a page for each command, kiln-print.1 for example, in the language of the process. Throws
// std::runtime_error, one sentence, when a page cannot be written.
void writeManual(const CLI::App& kiln, const std::filesystem::path& folder);

}  // namespace App
