#include "press/text/faces.h"

#include "formats/sentences.h"
#include "formats/text.h"
#include "press/error.h"

#include <hb-ot.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <set>
#include <string_view>

namespace Press {
namespace {

template <class T, class Destroy>
std::unique_ptr<T, Destroy> owned(T* object, Destroy destroy) {
  return {object, destroy};
}

std::string textIn(const FcPattern* pattern, const char* key, int index = 0) {
  FcChar8* text = nullptr;
  if (FcPatternGetString(pattern, key, index, &text) != FcResultMatch) return {};
  return reinterpret_cast<const char*>(text);
}

bool flagIn(const FcPattern* pattern, const char* key) {
  FcBool flag = FcFalse;
  return FcPatternGetBool(pattern, key, 0, &flag) == FcResultMatch && flag != FcFalse;
}

// Whether the face has outlines in a format that can be shaped.
bool hasOutlines(const FcPattern* face) {
  const std::string format = textIn(face, FC_FONTFORMAT);
  const std::string file = textIn(face, FC_FILE);
  return flagIn(face, FC_OUTLINE) && !flagIn(face, FC_COLOR) && (format == "TrueType" || format == "CFF") &&
         !file.ends_with(".woff") && !file.ends_with(".woff2");
}

FcFontSet* facesWithOutlines(FcConfig* config, const std::set<std::string>& brokenFiles) {
  FcFontSet* usable = FcFontSetCreate();
  for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
    const FcFontSet* set = FcConfigGetFonts(config, name);
    for (int index = 0; set && index < set->nfont; ++index) {
      FcPattern* face = set->fonts[index];
      if (!hasOutlines(face) || brokenFiles.contains(textIn(face, FC_FILE))) continue;
      FcPatternReference(face);
      FcFontSetAdd(usable, face);
    }
  }
  return usable;
}

bool isOfFamily(const FcPattern* face, const std::string& family) {
  const auto* name = reinterpret_cast<const FcChar8*>(family.c_str());
  FcChar8* own = nullptr;
  for (int index = 0; FcPatternGetString(face, FC_FAMILY, index, &own) == FcResultMatch; ++index)
    if (FcStrCmpIgnoreCase(own, name) == 0) return true;
  return false;
}

// Families whose letters are as wide and nearly alike in form, as Fontconfig's metric aliases group them.
constexpr std::array<std::initializer_list<const char*>, 5> alikeFamilies = {{
    {"Arial", "Arimo", "Liberation Sans", "Albany", "Albany AMT", "Helvetica", "Nimbus Sans", "Nimbus Sans L",
     "TeX Gyre Heros"},
    {"Times New Roman", "Tinos", "Liberation Serif", "Thorndale", "Thorndale AMT", "Times", "Nimbus Roman",
     "Nimbus Roman No9 L", "TeX Gyre Termes"},
    {"Courier New", "Cousine", "Liberation Mono", "Cumberland", "Cumberland AMT", "Courier", "Nimbus Mono",
     "Nimbus Mono L", "Nimbus Mono PS", "TeX Gyre Cursor"},
    {"Calibri", "Carlito"},
    {"Cambria", "Caladea"},
}};

// Whether the face is of the family, or prints so much like it that nobody needs to be told.
bool standsFor(const FcPattern* face, const std::string& family) {
  if (isOfFamily(face, family)) return true;
  return std::ranges::any_of(alikeFamilies, [&](const auto& alike) {
    const auto is = [&](const char* name) {
      return FcStrCmpIgnoreCase(reinterpret_cast<const FcChar8*>(name),
                                reinterpret_cast<const FcChar8*>(family.c_str())) == 0;
    };
    return std::ranges::any_of(alike, is) &&
           std::ranges::any_of(alike, [&](const char* name) { return isOfFamily(face, name); });
  });
}

// Selects a named instance, such as a weight, of a variable font.
void setDesign(hb_font_t* font, const FcPattern* face, int instance) {
  if (instance > 0 && instance < 0x8000) hb_font_set_var_named_instance(font, static_cast<unsigned>(instance - 1));
  std::vector<hb_variation_t> variations;
  const std::string all = textIn(face, FC_FONT_VARIATIONS);
  for (std::size_t start = 0; start < all.size();) {
    const std::size_t end = std::min(all.find(',', start), all.size());
    hb_variation_t variation;
    if (hb_variation_from_string(all.data() + start, static_cast<int>(end - start), &variation))
      variations.push_back(variation);
    start = end + 1;
  }
  if (!variations.empty()) hb_font_set_variations(font, variations.data(), static_cast<unsigned>(variations.size()));
}

Face openFace(const FcPattern* pattern) {
  int index = 0;
  FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
  const auto blob = owned(hb_blob_create_from_file(textIn(pattern, FC_FILE).c_str()), hb_blob_destroy);
  const auto face = owned(hb_face_create(blob.get(), static_cast<unsigned>(index & 0xFFFF)), hb_face_destroy);
  Face result;
  result.font.reset(hb_font_create(face.get()));
  result.name = textIn(pattern, FC_FAMILY);
  const unsigned units = hb_face_get_upem(face.get());
  result.unitsToEm = units;
  hb_font_set_scale(result.font.get(), static_cast<int>(units), static_cast<int>(units));
  setDesign(result.font.get(), pattern, index >> 16);
  FcMatrix* leaning = nullptr;
  if (FcPatternGetMatrix(pattern, FC_MATRIX, 0, &leaning) == FcResultMatch)
    hb_font_set_synthetic_slant(result.font.get(), static_cast<float>(leaning->xy));
  result.isToBeThickened = flagIn(pattern, FC_EMBOLDEN);
  return result;
}

bool isEmpty(const Face& face) { return hb_face_get_glyph_count(hb_font_get_face(face.font.get())) == 0; }

bool continuesLetter(char32_t character) {
  switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT: return true;
    default: return false;
  }
}

// Whether the character is visible, so that a face must have it.
bool isSeen(char32_t character) {
  switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_SPACE_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_LINE_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_PARAGRAPH_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT: return false;
    default: return !(character >= 0xFE00 && character <= 0xFE0F);  // variation selectors
  }
}

std::vector<Cluster> clustersOf(const std::u32string& text) {
  std::vector<Cluster> clusters;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (clusters.empty() || !continuesLetter(text[index]))
      clusters.push_back({index, index + 1});
    else
      clusters.back().end = index + 1;
  }
  return clusters;
}

bool hasAll(const Face& face, const std::u32string& text, const Cluster& cluster) {
  return std::ranges::all_of(std::u32string_view(text).substr(cluster.begin, cluster.end - cluster.begin),
                             [&](char32_t character) { return !isSeen(character) || face.has(character); });
}

std::string sentenceOnMissing(const std::set<char32_t>& letters) {
  constexpr std::size_t mostNamed = 5;
  std::string names;
  std::size_t count = 0;
  for (const char32_t letter : letters) {
    if (++count > mostNamed) break;
    names += (names.empty() ? "" : ", ") + Formats::toUtf8(letter);
  }
  if (letters.size() > mostNamed)
    return Formats::sentence("No installed face has {1} and others of the watermark's text; install one, or empty "
                             "boxes are printed in their "
                             "place.",
                             names);
  return Formats::sentence(
      "No installed face has {1} of the watermark's text; install one, or empty boxes are printed in their place.",
      names);
}

}  // namespace

bool Face::has(char32_t character) const {
  hb_codepoint_t glyph = 0;
  return hb_font_get_nominal_glyph(font.get(), character, &glyph) != 0;
}

Faces::Faces(const Watermark& watermark, const std::u32string& text)
    : config(FcConfigReference(nullptr), FcConfigDestroy),
      installed(facesWithOutlines(config.get(), {}), FcFontSetDestroy),
      family(watermark.face),
      wanted(FcPatternCreate(), FcPatternDestroy) {
  FcPattern* pattern = wanted.get();
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(watermark.face.c_str()));
  FcPatternAddInteger(pattern, FC_WEIGHT, watermark.isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern, FC_SLANT, watermark.isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcConfigSubstitute(config.get(), pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  choose(text);
}

// The nearest match for `wanted` among the faces that have most of the letters; skips broken faces.
const Face& Faces::nearest(const FcCharSet* letters) {
  const Pattern asked(FcPatternDuplicate(wanted.get()), FcPatternDestroy);
  if (letters) FcPatternAddCharSet(asked.get(), FC_CHARSET, letters);
  for (;;) {
    FcFontSet* sets[] = {installed.get()};
    FcResult ignored = FcResultMatch;
    const Pattern found(FcFontSetMatch(config.get(), sets, 1, asked.get(), &ignored), FcPatternDestroy);
    if (!found)
      throw Error(Formats::sentence(
          "No face is installed that a watermark can be printed in: install one, DejaVu for example."));
    Face face = openFace(found.get());
    if (isEmpty(face)) {
      brokenFiles.insert(textIn(found.get(), FC_FILE));
      installed.reset(facesWithOutlines(config.get(), brokenFiles));
      continue;
    }
    if (faces.empty() && !standsFor(found.get(), family))
      sentences.push_back(Formats::sentence("The face {1} is not installed; the watermark is printed in {2}.",
                                            Formats::quoted(family), Formats::quoted(face.name)));
    return faces.emplace_back(std::move(face));
  }
}

void Faces::choose(const std::u32string& text) {
  const std::vector<Cluster> clusters = clustersOf(text);
  const Face& first = nearest(nullptr);
  std::set<char32_t> missing;
  for (const Cluster& cluster : clusters) {
    if (hasAll(first, text, cluster)) continue;
    for (std::size_t index = cluster.begin; index < cluster.end; ++index)
      if (isSeen(text[index])) missing.insert(text[index]);
  }
  while (!missing.empty()) {
    const auto letters = owned(FcCharSetCreate(), FcCharSetDestroy);
    for (const char32_t letter : missing) FcCharSetAddChar(letters.get(), letter);
    const Face& next = nearest(letters.get());
    if (std::erase_if(missing, [&](char32_t letter) { return next.has(letter); }) == 0) break;
  }
  if (!missing.empty()) sentences.push_back(sentenceOnMissing(missing));
  for (const Cluster& cluster : clusters)
    chosen.insert(chosen.end(), cluster.end - cluster.begin, &faceFor(text, cluster));
}

const Face& Faces::faceFor(const std::u32string& text, const Cluster& cluster) const {
  for (const Face& face : faces)
    if (hasAll(face, text, cluster)) return face;
  for (const Face& face : faces)
    if (face.has(text[cluster.begin])) return face;
  return faces.front();
}

}  // namespace Press
