#pragma once

#include "press/marks/watermark.h"

#include <fontconfig/fontconfig.h>
#include <hb.h>

#include <list>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Press {

// An installed font face for shaping. Lengths are in font units.
struct Face {
  std::unique_ptr<hb_font_t, decltype(&hb_font_destroy)> font{nullptr, hb_font_destroy};
  std::string name;  // the family name
  double unitsToEm = 1000;
  bool isToBeThickened = false;  // bold was requested, but the face has no bold design

  bool has(char32_t character) const;
};

// A base letter with its accents and joiners, which must come from one face.
struct Cluster {
  std::size_t begin = 0, end = 0;
};

// The faces of one text: the requested or nearest face, and fallback faces for its missing letters. Bitmap and colour
// faces are skipped, since they have no outlines.
class Faces {
 public:
  // Selects faces for `watermark`. Throws Error when no face is installed.
  Faces(const Watermark& watermark, const std::u32string& text);

  // The face of each character of the text.
  const std::vector<const Face*>& ofCharacters() const { return chosen; }

  // Sentences about missing faces and letters.
  const std::vector<std::string>& notes() const { return sentences; }

 private:
  using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

  const Face& nearest(const FcCharSet* letters);
  void choose(const std::u32string& text);
  const Face& faceFor(const std::u32string& text, const Cluster& cluster) const;

  std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> config;
  std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> installed;
  std::string family;
  Pattern wanted;
  std::set<std::string> brokenFiles;
  std::list<Face> faces;
  std::vector<const Face*> chosen;
  std::vector<std::string> sentences;
};

}  // namespace Press
