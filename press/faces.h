#pragma once

#include <list>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <fontconfig/fontconfig.h>
#include <hb.h>

#include "press/watermark.h"

namespace Press {

/// An installed face, ready to shape text. Lengths are in the face's own units.
struct Face {
  std::unique_ptr<hb_font_t, decltype(&hb_font_destroy)> font{nullptr, hb_font_destroy};
  std::string name;  ///< Of its family.
  double unitsToEm = 1000;
  bool isToBeThickened = false;  ///< Bold was asked for, and the face has none.

  bool has(char32_t character) const;
};

/// A letter with the accents and joiners that belong to it, which come from one face.
struct Cluster {
  std::size_t begin = 0, end = 0;
};

/// The faces that one text is printed in: the one that was asked for, or the nearest to it, and behind it those that
/// have the letters which it lacks. Faces of colours and pixels are passed over; they have no outlines.
class Faces {
 public:
  /// Takes what `watermark` asks for. Throws `Error` when no face is installed.
  Faces(const Watermark& watermark, const std::u32string& text);

  /// For each character of the text the face that prints it.
  const std::vector<const Face*>& ofCharacters() const { return chosen; }
  /// Sentences on what is missing.
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
