#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "press/job/effects.h"
#include "press/pages/rule.h"

namespace Press {

/// The result of printing a job, as computed in advance. Pages and sheets count from 1; printed ones are numbered
/// consecutively.
struct Plan {
  int jobPages = 0;
  std::vector<int> kept;            ///< The pages of the job that are printed.
  int sheets = 0;                   ///< Equal to the number of pages, unless several go on a sheet.
  std::vector<int> a3LedgerSheets;  ///< Sheets of A3 or Ledger size.
  bool drawsWatermark = false;      ///< False when there is no watermark, or its text is invisible.
  std::vector<std::string> notes;   ///< Sentences about deviations from the requested effects.
};

/// Computes what `printPdf` would do. Throws `Error` when it would fail for the job or a mark.
Plan planPrint(const std::filesystem::path& in, const Effects& effects, const PageRule& pages = {});

}  // namespace Press
