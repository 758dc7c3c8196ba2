#pragma once

#include "press/error.h"
#include "press/job/effects.h"
#include "press/pdf/job_file.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Press {

// Called while a job is printed, on the printing thread: `done` of `total` units of work, never decreasing. Returning
// false stops the job.
using Progress = std::function<bool(int done, int total)>;

// Prints the job `in`, or the pages in `pages`, to the PDF file `out` with these effects on every page. Overlay page
// rules and the first page refer to the printed pages. Replaces `out` atomically, and leaves it unchanged on failure;
// it must not be the job's own file. Everything else in the document is kept, except that several pages per sheet drop
// what links to pages. A job that a password has opened, or allowed to be printed, is printed without encryption.
// Returns sentences about deviations from the requested effects, such as missing faces. Throws Error, or Stopped when
// `progress` returned false.
std::vector<std::string> printPdf(const JobFile& in, const std::filesystem::path& out, const Effects& effects,
                                  const Progress& progress = {}, const PageRule& pages = {});

// Prints one page as `printPdf` does: returns a PDF of that page with its printable annotations drawn. Pages count
// from 1; with several per sheet, prints the sheet with that page. Throws Error.
std::string printPage(const JobFile& in, int page, const Effects& effects);

// An open job, for printing many of its pages one at a time. The file must not change meanwhile. Not thread-safe.
class Job {
 public:
  // Throws Error when the file cannot be printed.
  explicit Job(const JobFile& file);
  ~Job();
  Job(Job&&) noexcept;
  Job& operator=(Job&&) noexcept;

  // At least 1.
  int pageCount() const;

  // Like the function `printPage`.
  std::string printPage(int page, const Effects& effects);

  // Sentences about deviations in the last `printPage`.
  const std::vector<std::string>& notes() const;

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace Press
