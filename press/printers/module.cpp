#include "press/printers/module.h"

#include "formats/sentences.h"
#include "press/printers/module_reason.h"

#include <cups/cups.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

// What the service's library says where no service answers.
[[maybe_unused]] constexpr std::string_view silence[] = {
    Formats::sentenceTemplate("Bad file descriptor"),
    Formats::sentenceTemplate("Connection refused"),
    Formats::sentenceTemplate("Host is down"),
};

// The queues of this user; one with options of its own, an instance, is QUEUE/INSTANCE.
class Destinations {
 public:
  Destinations() {
    Press::askForNoPassword();
    count = cupsGetDests2(CUPS_HTTP_DEFAULT, &first);
  }
  ~Destinations() { cupsFreeDests(count, first); }
  Destinations(const Destinations&) = delete;
  Destinations& operator=(const Destinations&) = delete;

  const cups_dest_t* begin() const { return first; }
  const cups_dest_t* end() const { return first + count; }

 private:
  cups_dest_t* first = nullptr;
  int count = 0;
};

std::string nameOf(const cups_dest_t& printer) {
  return printer.instance == nullptr ? printer.name : std::string(printer.name) + '/' + printer.instance;
}

const char* optionOf(const cups_dest_t& printer, const char* name) {
  const char* const value = cupsGetOption(name, printer.num_options, printer.options);
  return value == nullptr ? "" : value;
}

class Options {
 public:
  ~Options() { cupsFreeOptions(count, options); }
  void add(const char* name, const char* value) { count = cupsAddOption(name, value, count, &options); }

  int count = 0;
  cups_option_t* options = nullptr;
};

// A job of the service, cancelled by the destructor unless it was sent whole.
class SentJob {
 public:
  SentJob(const std::string& queue, const KilnPrintRequest& request, const Options& options)
      : printer(queue),
        number(cupsCreateJob(CUPS_HTTP_DEFAULT, printer.c_str(), request.title, options.count, options.options)) {
    if (number == 0) throw std::runtime_error(Press::lastReason());
    const http_status_t start =
        cupsStartDocument(CUPS_HTTP_DEFAULT, printer.c_str(), number, request.title, CUPS_FORMAT_PDF, 1);
    isStarted = start == HTTP_STATUS_CONTINUE;
    if (!isStarted) cancelAndThrow();
  }
  ~SentJob() {
    if (isComplete) return;
    if (isStarted) cupsFinishDocument(CUPS_HTTP_DEFAULT, printer.c_str());
    cupsCancelJob2(CUPS_HTTP_DEFAULT, printer.c_str(), number, 0);
  }
  SentJob(const SentJob&) = delete;
  SentJob& operator=(const SentJob&) = delete;

  void send(const char* bytes, std::size_t size) {
    if (cupsWriteRequestData(CUPS_HTTP_DEFAULT, bytes, size) != HTTP_STATUS_CONTINUE)
      throw std::runtime_error(Press::lastReason());
  }

  int complete() {
    isStarted = false;
    if (cupsFinishDocument(CUPS_HTTP_DEFAULT, printer.c_str()) > IPP_STATUS_OK_CONFLICTING)
      throw std::runtime_error(Press::lastReason());
    isComplete = true;
    return number;
  }

 private:
  [[noreturn]] void cancelAndThrow() const {
    const std::string why = Press::lastReason();
    cupsCancelJob2(CUPS_HTTP_DEFAULT, printer.c_str(), number, 0);
    throw std::runtime_error(why);
  }

  std::string printer;
  int number;
  bool isStarted = false;
  bool isComplete = false;
};

// What the user has set for the queue by the system's tools, and on top what is wanted of this job.
void fill(Options& options, const cups_dest_t& printer, const KilnPrintRequest& request) {
  for (int i = 0; i < printer.num_options; ++i) options.add(printer.options[i].name, printer.options[i].value);
  options.add("copies", std::to_string(request.copies).c_str());
  if (request.sides != nullptr) options.add("sides", request.sides);
}

int send(const KilnPrintRequest& request, int (*progress)(void*, long long, long long), void* context) {
  const Destinations all;
  const cups_dest_t* printer = all.begin();
  while (printer != all.end() && nameOf(*printer) != request.printer) ++printer;
  if (printer == all.end())
    throw std::runtime_error(std::string(Formats::sentenceTemplate("there is no such printer any more")));
  Options options;
  fill(options, *printer, request);
  std::ifstream file(request.file, std::ios::binary | std::ios::ate);
  const long long total = file ? static_cast<long long>(file.tellg()) : -1;
  if (total < 0 || !file.seekg(0))
    throw std::runtime_error(std::string(Formats::sentenceTemplate("the printed pages cannot be read")));
  SentJob job(printer->name, request, options);
  char block[1 << 16];
  long long done = 0;
  while (progress(context, done, total) != 0) {
    file.read(block, sizeof block);
    const std::streamsize size = file.gcount();
    if (size <= 0) break;
    job.send(block, static_cast<std::size_t>(size));
    done += size;
  }
  if (file.bad()) throw std::runtime_error(std::string(Formats::sentenceTemplate("the printed pages cannot be read")));
  return done == total ? job.complete() : 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int
kilnListPrinters(KilnPrinterReceiver receiver, void (*fail)(void*, const char*), void* context) {
  try {
    const Destinations all;
    if (all.begin() == all.end() && cupsLastError() > IPP_STATUS_OK_CONFLICTING &&
        cupsLastError() != IPP_STATUS_ERROR_NOT_FOUND) {
      fail(context, Press::lastReason().c_str());
      return 0;
    }
    for (const cups_dest_t& printer : all) {
      const unsigned long type = std::strtoul(optionOf(printer, "printer-type"), nullptr, 10);
      receiver(context, nameOf(printer).c_str(), optionOf(printer, "printer-info"), printer.is_default,
               (type & CUPS_PRINTER_DUPLEX) != 0 ? 1 : 0);
    }
    return 1;
  } catch (const std::exception& problem) {
    fail(context, problem.what());
  }
  return 0;
}

extern "C" __attribute__((visibility("default"))) int kilnSendToPrinter(const KilnPrintRequest* request,
                                                                        int (*progress)(void*, long long, long long),
                                                                        void (*fail)(void*, const char*),
                                                                        void* context) {
  try {
    return send(*request, progress, context);
  } catch (const std::exception& problem) {
    fail(context, problem.what());
  }
  return 0;
}

static_assert(std::is_same_v<decltype(&kilnListPrinters), KilnListPrinters>);
static_assert(std::is_same_v<decltype(&kilnSendToPrinter), KilnSendToPrinter>);
