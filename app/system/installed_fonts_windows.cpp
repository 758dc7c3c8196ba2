#include "app/system/installed_fonts.h"

#include <windows.h>

#include <set>

namespace App {
namespace {

using Names = std::set<std::u16string>;

int CALLBACK note(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM names) {
  const std::wstring_view name = font->lfFaceName;
  // "@" marks the vertical writing variant of another face.
  if (!name.starts_with(L'@')) reinterpret_cast<Names*>(names)->emplace(name.begin(), name.end());
  return 1;  // go on
}

}  // namespace

std::optional<std::vector<std::u16string>> installedFonts() {
  const HDC screen = CreateICW(L"DISPLAY", nullptr, nullptr, nullptr);
  if (screen == nullptr) return std::nullopt;
  LOGFONTW all{};
  all.lfCharSet = DEFAULT_CHARSET;
  Names names;
  EnumFontFamiliesExW(screen, &all, note, reinterpret_cast<LPARAM>(&names), 0);
  DeleteDC(screen);
  return std::vector<std::u16string>(names.begin(), names.end());
}

}  // namespace App
