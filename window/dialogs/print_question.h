// Asks where and how to print.
#pragma once

#include "press/pages/page_list.h"
#include "press/printers/printers.h"
#include "window/language/texts.h"

#include <optional>
#include <vector>

class QWidget;

namespace Window {

struct PrintQuestion {
  // What the job has, to choose from.
  int pages = 1;

  std::vector<Press::Printer> printers;
};

struct PrintChoice {
  // None for a PDF file.
  std::optional<Press::PrinterJob> printer;
  Press::PageRule pages;
};

// Nothing when the user cancels. The choice names a page of the job.
std::optional<PrintChoice> askHowToPrint(const PrintQuestion& question, const Texts& texts, QWidget* parent);

}  // namespace Window
