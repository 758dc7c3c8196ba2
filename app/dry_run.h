// Describes in words what printing would do.
#pragma once

#include "press/job/effects.h"
#include "press/job/plan.h"

#include <string>
#include <vector>

namespace App {

// One sentence per step, in order, with the pages concerned.
std::vector<std::string> describe(const Press::Plan& plan, const Press::Effects& effects);

// "every page", "no page", "page 3", "pages 1-3, 5": the pages of `count` for which `isMeant` is true; `word` is the
// singular noun.
template <class IsMeant>
std::string pagesInWords(int count, const std::string& word, const IsMeant& isMeant) {
  std::string listed;
  int meant = 0;
  for (int page = 1; page <= count; ++page) {
    if (!isMeant(page)) continue;
    int last = page;
    while (last < count && isMeant(last + 1)) ++last;
    meant += last - page + 1;
    listed += (listed.empty() ? "" : ", ") + std::to_string(page) + (last > page ? '-' + std::to_string(last) : "");
    page = last;
  }
  if (meant == count) return "every " + word;
  if (meant == 0) return "no " + word;
  return word + (meant == 1 ? " " : "s ") + listed;
}

}  // namespace App
