#include "files/path_text.h"

#include "formats/text.h"

namespace Files {
namespace {

// Wide names are UTF-16 already; narrow ones are treated as UTF-8.
template <class Unit>
std::u16string fromNative(const std::basic_string<Unit>& native) {
  if constexpr (sizeof(Unit) == sizeof(char16_t))
    return {native.begin(), native.end()};
  else
    return Formats::toUtf16(native);
}

template <class Native>
Native toNative(std::u16string_view text) {
  if constexpr (sizeof(typename Native::value_type) == sizeof(char16_t))
    return {text.begin(), text.end()};
  else
    return Formats::toUtf8(text);
}

}  // namespace

std::u16string pathText(const std::filesystem::path& path) { return fromNative(path.native()); }

std::filesystem::path pathFromText(std::u16string_view text) {
  return toNative<std::filesystem::path::string_type>(text);
}

std::string shownPath(const std::filesystem::path& path) { return Formats::toUtf8(pathText(path)); }

std::filesystem::path folderOf(const std::filesystem::path& path) {
  return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

bool isSeparator(char16_t unit) { return unit == u'/' || unit == char16_t{std::filesystem::path::preferred_separator}; }

}  // namespace Files
