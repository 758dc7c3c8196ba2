// A printer of the system as the target of a command.
#pragma once

#include "press/printers/printers.h"

#include <CLI/CLI.hpp>

#include <string>

namespace App {

struct PrinterOptions {
  std::string printer;  // empty for none
  int copies = 1;
  std::string sides;

  // Declares them on a command. This object must live until the command runs.
  void declare(CLI::App& command);

  // The job for the printer. Throws std::runtime_error, one sentence, when the system has no such printer, or it cannot
  // do that.
  Press::PrinterJob resolve(const std::string& title) const;
};

}  // namespace App
