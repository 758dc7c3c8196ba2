#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "press/effects.h"
#include "press/page_rule.h"

namespace Press {

/// What printing a job would come to. Pages and sheets count from 1; those that are printed are counted among
/// themselves.
struct Plan {
  int jobPages = 0;
  std::vector<int> kept;            ///< The pages of the job that are printed.
  int sheets = 0;                   ///< As many as pages, unless several go on a sheet.
  std::vector<int> a3LedgerSheets;  ///< Those of A3 or Ledger size.
  bool drawsWatermark = false;      ///< Not where there is none, or nothing of its text is seen.
  std::vector<std::string> notes;   ///< Sentences on what would be printed otherwise than asked.
};

/// Finds out what `printPdf` would do, without doing it. Throws `Error` where that would fail for the job or a mark.
Plan planPrint(const std::filesystem::path& in, const Effects& effects, const PageRule& pages = {});

}  // namespace Press
