#include "app/system/installed_fonts.h"
#include "formats/text.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <set>

namespace App {

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
