#include "script/placeholders.h"

#include "script/portable_text.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Script {
namespace {

// The quotation marks of the user interface's languages.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> quotationMarks = {
    {{"\"", "\""}, {"“", "”"}, {"„", "“"}, {"«", "»"}, {"「", "」"}, {"『", "』"}, {"《", "》"}}};

// Shorter texts are parts of too many words.
constexpr std::size_t shortestPart = 3;

bool namesForeignPath(const std::string& sentence) {
  for (std::size_t at = sentence.find_first_of("/\\"); at != sentence.npos;
       at = sentence.find_first_of("/\\", at + 1)) {
    const std::size_t before = sentence.find_last_of(" \"", at);
    const std::size_t start = before == sentence.npos ? 0 : before + 1;
    const bool isInHome = sentence.compare(start, homeMark.size(), homeMark) == 0;
    const bool isAddress = sentence.compare(start, 9, "chrome://") == 0;
    if (!isInHome && !isAddress) return true;
  }
  return false;
}

}  // namespace

std::string Placeholders::of(const std::string& text) {
  if (text.empty()) return {};
  return placeholders.try_emplace(text, "text " + std::to_string(placeholders.size() + 1)).first->second;
}

std::string Placeholders::inSentence(const std::string& sentence) {
  std::vector<std::pair<std::string, std::string>> known(placeholders.begin(), placeholders.end());
  std::ranges::sort(known, [](const auto& a, const auto& b) {
    return a.first.size() != b.first.size() ? a.first.size() > b.first.size() : a.first < b.first;
  });
  std::string result = sentence;
  for (const auto& [text, placeholder] : known) {
    if (text.size() < shortestPart) continue;
    for (std::size_t at = result.find(text); at != result.npos; at = result.find(text, at + placeholder.size()))
      result.replace(at, text.size(), placeholder);
  }
  for (const auto& [opening, closing] : quotationMarks)
    for (std::size_t at = result.find(opening); at != result.npos; at = result.find(opening, at)) {
      const std::size_t start = at + opening.size();
      const std::size_t end = result.find(closing, start);
      if (end == result.npos) break;
      const std::string quoted = result.substr(start, end - start);
      const std::string placeholder = quoted.starts_with("text ") ? quoted : of(quoted);
      result.replace(start, end - start, placeholder);
      at = start + placeholder.size() + closing.size();
    }
  return namesForeignPath(result) ? of(sentence) : result;
}

}  // namespace Script
