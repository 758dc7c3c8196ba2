// Paths to text and back. Text is UTF-16 on every system and may hold unpaired surrogates.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Files {

// With the path's own separators.
std::u16string pathText(const std::filesystem::path& path);
std::filesystem::path pathFromText(std::u16string_view text);

// The path as UTF-8, for messages.
std::string shownPath(const std::filesystem::path& path);

// The parent folder of `path`; "." for a bare name.
std::filesystem::path folderOf(const std::filesystem::path& path);

// Whether the unit separates path components: "/", on Windows also "\".
bool isSeparator(char16_t unit);

}  // namespace Files
