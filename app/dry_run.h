// Describes in words what printing would do.
#pragma once

#include "formats/sentences.h"
#include "press/job/effects.h"
#include "press/job/plan.h"

#include <string>
#include <vector>

namespace App {

// One sentence per step, in order, with the pages concerned.
std::vector<std::string> describe(const Press::Plan& plan, const Press::Effects& effects);

// What pages are counted in.
enum class Unit { page, sheet };

// "every page", "no page", "page 3", "pages 1-3, 5": the pages of `count` for which `isMeant` is true.
template <class IsMeant>
std::string pagesInWords(int count, Unit unit, const IsMeant& isMeant) {
  std::string listed;
  int meant = 0;
  for (int page = 1; page <= count; ++page) {
    if (!isMeant(page)) continue;
    int last = page;
    while (last < count && isMeant(last + 1)) ++last;
    meant += last - page + 1;
    const std::string run = std::to_string(page) + (last > page ? '-' + std::to_string(last) : "");
    listed = listed.empty() ? run : Formats::sentence("{1}, {2}", listed, run);
    page = last;
  }
  const bool isPage = unit == Unit::page;
  if (meant == count) return isPage ? Formats::sentence("every page") : Formats::sentence("every sheet");
  if (meant == 0) return isPage ? Formats::sentence("no page") : Formats::sentence("no sheet");
  if (meant == 1) return isPage ? Formats::sentence("page {1}", listed) : Formats::sentence("sheet {1}", listed);
  return isPage ? Formats::sentence("pages {1}", listed) : Formats::sentence("sheets {1}", listed);
}

}  // namespace App
