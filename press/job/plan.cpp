#include "press/job/plan.h"

#include "formats/sentences.h"
#include "press/error.h"
#include "press/job/overlay_words.h"
#include "press/marks/marks.h"
#include "press/pages/mirror_and_rotation.h"
#include "press/pages/shape.h"
#include "press/pdf/document.h"

namespace Press {

Plan planPrint(const JobFile& in, const Effects& effects, const PageRule& pages) {
  if (!effects.refusal.empty()) throw Error(effects.refusal);
  const Document document = openDocument(in);
  Marks marks(*document.pdf);
  marks.prepare(effects);
  Plan plan;
  plan.drawsWatermark = marks.drawsWatermark();
  plan.notes = overlayNotes(effects);
  plan.notes.insert(plan.notes.end(), marks.notes().begin(), marks.notes().end());
  plan.jobPages = static_cast<int>(document.pages.size());
  int placesLeft = 0;  // on the sheet
  for (int page = 1; page <= plan.jobPages; ++page) {
    if (!pages.has(page)) continue;
    plan.kept.push_back(page);
    if (placesLeft == 0) {
      placesLeft = effects.pagesOnSheet;
      ++plan.sheets;
      // A sheet has the size of its first page.
      if (isA3OrLedger(shapeOf(document.pages[static_cast<std::size_t>(page - 1)])))
        plan.a3LedgerSheets.push_back(plan.sheets);
    }
    --placesLeft;
  }
  if (plan.kept.empty())
    throw Error(Formats::sentence("{1} has none of the chosen pages: choose some from 1 to {2}.", quoted(in.file),
                                  plan.jobPages));
  return plan;
}

}  // namespace Press
