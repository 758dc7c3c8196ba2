#include "app/system/installed_fonts.h"
#include "formats/text.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <set>
#include <system_error>

namespace App {

namespace {

std::filesystem::path pathOf(const FcChar8* bytes) { return reinterpret_cast<const char*>(bytes); }

}  // namespace

std::vector<std::filesystem::path> fontPlaces() {
  std::vector<std::filesystem::path> places;
  const std::unique_ptr<FcStrList, decltype(&FcStrListDone)> folders(FcConfigGetFontDirs(nullptr), &FcStrListDone);
  while (const FcChar8* folder = folders ? FcStrListNext(folders.get()) : nullptr) places.push_back(pathOf(folder));
  const FcFontSet* fonts = FcConfigGetFonts(nullptr, FcSetSystem);
  for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
    FcChar8* file = nullptr;
    std::error_code ignored;
    if (FcPatternGetString(fonts->fonts[i], FC_FILE, 0, &file) == FcResultMatch &&
        std::filesystem::is_symlink(pathOf(file), ignored))
      places.push_back(pathOf(file));
  }
  return places;
}

std::optional<std::vector<std::u16string>> installedFonts() {
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> any(FcPatternCreate(), &FcPatternDestroy);
  const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> family(
      FcObjectSetBuild(FC_FAMILY, static_cast<char*>(nullptr)), &FcObjectSetDestroy);
  const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(FcFontList(nullptr, any.get(), family.get()),
                                                                      &FcFontSetDestroy);
  if (!fonts) return std::nullopt;
  std::set<std::u16string> names;
  for (int i = 0; i < fonts->nfont; ++i) {
    // The first name of a face is its own; the others are translations.
    FcChar8* name = nullptr;
    if (FcPatternGetString(fonts->fonts[i], FC_FAMILY, 0, &name) == FcResultMatch)
      names.insert(Formats::toUtf16(reinterpret_cast<const char*>(name)));
  }
  return std::vector<std::u16string>(names.begin(), names.end());
}

}  // namespace App
