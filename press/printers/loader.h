// The functions of the library that talks to the system's printers.
#pragma once

#include "press/printers/module.h"

namespace Press {

struct PrinterFunctions {
  KilnListPrinters list = nullptr;
  KilnSendToPrinter send = nullptr;
  KilnReadQueue readQueue = nullptr;
  KilnCheckDescription checkDescription = nullptr;
  KilnDescribeQueue describeQueue = nullptr;
};

// Loads the library at the first call. Throws Error when that fails.
const PrinterFunctions& printerFunctions();

}  // namespace Press
