// What printing would do, in words.
#pragma once

#include "press/effects.h"
#include "press/plan.h"

#include <map>
#include <string>
#include <vector>

namespace App {

// One sentence for each thing that is done, in the order in which it is done, with the pages that it is done to.
// `overlayNames`: what people call the overlays, by the names of their files.
std::vector<std::string> describe(const Press::Plan& plan, const Press::Effects& effects,
                                  const std::map<std::string, std::string>& overlayNames);

// "every page", "no page", "page 3", "pages 1-3, 5": those of `count` pages that `isMeant`, with the word for one.
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
