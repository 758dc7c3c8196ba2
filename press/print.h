#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "press/effects.h"
#include "press/error.h"

namespace Press {

/// Called while a job is printed, on the thread that prints it: `done` of `total` pages' worth of work, `done` never
/// less than before. Returning false stops the job.
using Progress = std::function<bool(int done, int total)>;

/// Prints the job `in`, or only these pages of it, into the PDF file `out` with these effects on every page. Overlays
/// and the first page are counted among the pages that are printed. `out` is replaced whole, or, when anything fails,
/// stays as it was; it must not be the job's own file. Everything of the document but its pages' look is kept; with
/// several pages on a sheet, also all that leads to a page goes. Returns sentences on what was printed otherwise than
/// asked, such as faces that are not installed. Throws `Error`, or `Cancelled` when `progress` asked to stop.
std::vector<std::string> printPdf(const std::filesystem::path& in, const std::filesystem::path& out,
                                  const Effects& effects, const Progress& progress = {}, const PageRule& pages = {});

/// One page as `printPdf` prints it: the bytes of a PDF of that page alone, with what it prints of its annotations
/// drawn. Pages count from 1; with several on a sheet, the sheet that this one is on. Throws `Error`.
std::string printPage(const std::filesystem::path& in, int page, const Effects& effects);

/// A job that is kept open, for looking at many of its printed pages. The file must not change meanwhile. For one
/// thread at a time.
class Job {
 public:
  /// Throws `Error` when the file cannot be printed.
  explicit Job(const std::filesystem::path& file);
  ~Job();
  Job(Job&&) noexcept;
  Job& operator=(Job&&) noexcept;

  /// At least 1.
  int pageCount() const;
  /// As the function `printPage`.
  std::string printPage(int page, const Effects& effects);
  /// Sentences on what `printPage` last printed otherwise than asked.
  const std::vector<std::string>& notes() const;

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace Press
