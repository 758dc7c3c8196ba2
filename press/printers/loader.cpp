#include "press/printers/loader.h"

#include "files/module.h"
#include "files/product_files.h"
#include "formats/sentences.h"
#include "press/error.h"

#include <stdexcept>
#include <string>
#include <type_traits>

namespace Press {
namespace {

template <class Function>
bool find(Files::Module& library, const char* symbol, Function& function) {
  function = library.function<std::remove_pointer_t<Function>>(symbol);
  return function != nullptr;
}

PrinterFunctions loadFunctions() {
  const std::filesystem::path file = Files::productModule("kiln-printers.so");
  std::string reason;
  try {
    Files::Module library(file);
    library.keepLoaded();
    PrinterFunctions functions;
    if (find(library, listPrintersSymbol, functions.list) && find(library, sendToPrinterSymbol, functions.send) &&
        find(library, readQueueSymbol, functions.readQueue) &&
        find(library, checkDescriptionSymbol, functions.checkDescription) &&
        find(library, describeQueueSymbol, functions.describeQueue))
      return functions;
    reason = Formats::sentence("it is not the library of this program");
  } catch (const std::runtime_error& problem) {
    reason = problem.what();
  }
  throw Error(Formats::sentence("The system's printers cannot be used, because {1} cannot be loaded ({2}): print to a "
                                "PDF file, or install the program again, and CUPS.",
                                quoted(file), reason));
}

}  // namespace

const PrinterFunctions& printerFunctions() {
  static const PrinterFunctions loaded = loadFunctions();
  return loaded;
}

}  // namespace Press
