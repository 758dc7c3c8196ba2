// Suggestions for a misspelt name.
#pragma once

#include "formats/letter_case.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Formats {

// The number of characters to insert, delete, replace or swap with their neighbour to make one name of the other,
// whatever their case.
inline std::size_t editDistance(std::u16string_view a, std::u16string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  const auto isSame = [](char16_t x, char16_t y) { return lowerCase(x) == lowerCase(y); };
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::vector<std::size_t> next(b.size() + 1, i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      next[j + 1] = std::min({row[j] + (isSame(a[i], b[j]) ? 0 : 1), row[j + 1] + 1, next[j] + 1});
      if (i > 0 && j > 0 && isSame(a[i], b[j - 1]) && isSame(a[i - 1], b[j]))
        next[j + 1] = std::min(next[j + 1], before[j - 1] + 1);
    }
    before = std::exchange(row, next);
  }
  return row.back();
}

// The names that somebody who wrote `word` may have meant, the nearest first; at most three, and none that differs by
// more than a third.
inline std::vector<std::string> nearNames(const std::vector<std::string>& names, std::string_view word) {
  constexpr std::size_t most = 3;
  constexpr std::size_t longest = 100;  // more is no slip of the fingers, and would take long to compare
  const std::u16string wanted = toUtf16(word);
  const std::size_t farthest = std::max<std::size_t>(1, wanted.size() / 3);
  std::multimap<std::size_t, std::string> byDistance;
  for (const std::string& name : names) {
    const std::u16string candidate = toUtf16(name);
    if (wanted.empty() || std::max(wanted.size(), candidate.size()) > longest) continue;
    const std::size_t distance = editDistance(wanted, candidate);
    if (distance <= farthest && distance < std::max(wanted.size(), candidate.size()))
      byDistance.emplace(distance, name);
  }
  std::vector<std::string> nearest;
  for (const auto& [distance, name] : byDistance)
    if (nearest.size() < most && std::ranges::find(nearest, name) == nearest.end()) nearest.push_back(name);
  return nearest;
}

// "A", "A or B", "A, B or C"; each name in quotation marks.
inline std::string alternatives(const std::vector<std::string>& names) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = Formats::quoted(names[i]);
    if (i == 0)
      list = name;
    else if (i + 1 == names.size())
      list = sentence("{1} or {2}", list, name);
    else
      list = sentence("{1}, {2}", list, name);
  }
  return list;
}

// A question with the near names, to follow the sentence that there is no `word`; empty when none is near.
inline std::string didYouMean(const std::vector<std::string>& names, std::string_view word) {
  const std::vector<std::string> nearest = nearNames(names, word);
  return nearest.empty() ? "" : ' ' + sentence("Did you mean {1}?", alternatives(nearest));
}

}  // namespace Formats
