// Paths as text, and back. Text is UTF-16 on every system; unpaired surrogates in it keep.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Refhost {

// With the separators that the path has.
std::u16string pathText(const std::filesystem::path& path);
std::filesystem::path pathFromText(std::u16string_view text);

// The path as UTF-8, for messages.
std::string shownPath(const std::filesystem::path& path);

// The folder that `path` lies in, "." for a name alone.
std::filesystem::path folderOf(const std::filesystem::path& path);

// Whether the unit parts names in a path: "/", on Windows also "\".
bool isSeparator(char16_t unit);

}  // namespace Refhost
