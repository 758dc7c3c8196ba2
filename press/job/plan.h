#pragma once

#include "press/job/effects.h"
#include "press/pages/page_list.h"
#include "press/pdf/job_file.h"

#include <string>
#include <vector>

namespace Press {

// The result of printing a job, as computed in advance. Pages and sheets count from 1; printed ones are numbered
// consecutively.
struct Plan {
  int jobPages = 0;
  std::vector<int> kept;            // the pages of the job that are printed
  int sheets = 0;                   // equal to the number of pages, unless several go on a sheet
  std::vector<int> a3LedgerSheets;  // sheets of A3 or Ledger size
  bool drawsWatermark = false;      // false when there is no watermark, or its text is invisible
  std::vector<std::string> notes;   // sentences about deviations from the requested effects
};

// Computes what `printPdf` would do. Throws Error when it would fail for the job or a mark.
Plan planPrint(const JobFile& in, const Effects& effects, const PageRule& pages = {});

}  // namespace Press
