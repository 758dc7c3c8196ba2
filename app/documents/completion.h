// What a shell offers for a command line that is being typed, from what the commands declare.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace App {

// `words` are those after "kiln"; the last one is being typed, and may be empty. The first line of the result says
// which files can stand there:
//
//   :                 none
//   :files .pdf .PDF  those with one of these endings, or any where none is named
//   :folders          folders
//
// Each other line is a word, and after a tabulator what it does. Never throws: where nothing can be told, nothing is
// offered.
std::string completions(const CLI::App& kiln, const std::vector<std::string>& words);

}  // namespace App
