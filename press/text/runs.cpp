#include "press/text/runs.h"

#include "formats/sentences.h"
#include "press/error.h"

#include <fribidi.h>

#include <algorithm>

namespace Press {
namespace {

// The bidirectional embedding level of each character: even for left-to-right, odd for right-to-left.
std::vector<FriBidiLevel> levelsOf(const std::u32string& text) {
  static_assert(sizeof(FriBidiChar) == sizeof(char32_t));
  const auto* characters = reinterpret_cast<const FriBidiChar*>(text.data());
  const int count = static_cast<int>(text.size());
  std::vector<FriBidiCharType> types(text.size());
  std::vector<FriBidiBracketType> brackets(text.size());
  std::vector<FriBidiLevel> levels(text.size());
  fribidi_get_bidi_types(characters, count, types.data());
  fribidi_get_bracket_types(characters, count, types.data(), brackets.data());
  FriBidiParType direction = FRIBIDI_PAR_ON;
  if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &direction, levels.data()) == 0)
    throw Error(Formats::sentence("The watermark's text cannot be put in order: shorten it."));
  return levels;
}

bool isShared(hb_script_t script) {
  return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

// The script of each character; common characters get the script of the preceding letters.
std::vector<hb_script_t> scriptsOf(const std::u32string& text) {
  std::vector<hb_script_t> scripts;
  hb_script_t first = HB_SCRIPT_COMMON;
  for (const char32_t character : text) {
    hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), character);
    if (isShared(first)) first = script;
    if (isShared(script) && !scripts.empty()) script = scripts.back();
    scripts.push_back(script);
  }
  for (hb_script_t& script : scripts) {
    if (!isShared(script)) break;
    script = first;
  }
  return scripts;
}

// Reverses nested runs, deepest level first.
void putInVisualOrder(std::vector<TextRun>& runs, std::vector<FriBidiLevel> levels) {
  FriBidiLevel deepest = 0;
  for (const FriBidiLevel level : levels) deepest = std::max(deepest, level);
  for (FriBidiLevel depth = deepest; depth > 0; --depth) {
    for (std::size_t start = 0; start < runs.size(); ++start) {
      std::size_t end = start;
      while (end < runs.size() && levels[end] >= depth) ++end;
      const auto at = [](std::size_t index) { return static_cast<std::ptrdiff_t>(index); };
      std::reverse(runs.begin() + at(start), runs.begin() + at(end));
      std::reverse(levels.begin() + at(start), levels.begin() + at(end));
      start = end;
    }
  }
}

}  // namespace

std::vector<TextRun> runsOf(const std::u32string& text, const std::vector<const Face*>& faces) {
  const std::vector<FriBidiLevel> levels = levelsOf(text);
  const std::vector<hb_script_t> scripts = scriptsOf(text);
  std::vector<TextRun> runs;
  std::vector<FriBidiLevel> levelOfRuns;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const bool continues = index > 0 && levels[index] == levels[index - 1] && scripts[index] == scripts[index - 1] &&
                           faces[index] == faces[index - 1];
    if (!continues) {
      const hb_direction_t direction = levels[index] % 2 == 0 ? HB_DIRECTION_LTR : HB_DIRECTION_RTL;
      runs.push_back({index, index, faces[index], scripts[index], direction});
      levelOfRuns.push_back(levels[index]);
    }
    runs.back().end = index + 1;
  }
  putInVisualOrder(runs, std::move(levelOfRuns));
  return runs;
}

}  // namespace Press
