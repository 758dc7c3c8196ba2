#include "press/printers/printers.h"

#include "formats/sentences.h"
#include "press/error.h"
#include "press/printers/loader.h"

namespace Press {
namespace {

struct Listing {
  std::vector<Printer> printers;
  std::string failure;
};

void receivePrinter(void* context, const char* name, const char* description, int isDefault, int printsBothSides) {
  static_cast<Listing*>(context)->printers.push_back({name, description, isDefault != 0, printsBothSides != 0});
}

struct Sending {
  const std::function<bool(std::int64_t, std::int64_t)>& progress;
  bool isStopped = false;
  std::string failure = {};
};

int reportSent(void* context, long long done, long long total) {
  Sending& sending = *static_cast<Sending*>(context);
  sending.isStopped = sending.progress && !sending.progress(done, total);
  return sending.isStopped ? 0 : 1;
}

}  // namespace

std::vector<Printer> systemPrinters() {
  Listing listing;
  const auto fail = [](void* context, const char* reason) {
    static_cast<Listing*>(context)->failure = Formats::sentence(reason);
  };
  if (printerFunctions().list(&receivePrinter, fail, &listing) == 0)
    throw Error(Formats::sentence("The system's printers cannot be listed ({1}): see that its print service runs.",
                                  listing.failure));
  return listing.printers;
}

std::string sendToPrinter(const std::filesystem::path& pdf, const PrinterJob& job,
                          const std::function<bool(std::int64_t, std::int64_t)>& progress) {
  Sending sending{progress};
  const auto fail = [](void* context, const char* reason) {
    static_cast<Sending*>(context)->failure = Formats::sentence(reason);
  };
  const std::string sides(job.sides ? sidesKeywords[static_cast<std::size_t>(*job.sides)] : "");
  const KilnPrintRequest request{job.printer.c_str(), job.title.c_str(), pdf.c_str(), job.copies,
                                 job.sides ? sides.c_str() : nullptr};
  const int number = printerFunctions().send(&request, &reportSent, fail, &sending);
  if (number != 0) return job.printer.substr(0, job.printer.find('/')) + '-' + std::to_string(number);
  if (sending.isStopped) throw Stopped();
  throw Error(Formats::sentence("The printer {1} does not take the job ({2}): see that it is on and accepts jobs.",
                                Formats::quoted(job.printer), sending.failure));
}

}  // namespace Press
