#include "app/system/user.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <windows.h>

#include <shlobj.h>

#include <memory>
#include <stdexcept>

namespace App {

std::filesystem::path userFolder() {
  PWSTR found = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_CREATE, nullptr, &found);
  const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> folder(found, &CoTaskMemFree);
  if (FAILED(result))
    throw std::runtime_error(Formats::sentence("Windows names no folder for your data; name one with --home DIR."));
  return std::filesystem::path(folder.get()) / "kiln";
}

std::string sharedMarksFolder() { return {}; }

std::vector<std::string> wantedLocales() {
  ULONG count = 0;
  ULONG length = 0;
  if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &length)) return {};
  std::u16string names(length, u'\0');
  if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, reinterpret_cast<PWSTR>(names.data()), &length))
    return {};
  std::vector<std::string> locales;
  for (const char16_t* name = names.c_str(); *name != u'\0'; name += std::u16string_view(name).size() + 1)
    locales.push_back(Formats::toUtf8(name));
  return locales;
}

}  // namespace App
