// The interface of the library that talks to the system's printers. It is plain C, and no ownership crosses it: data is
// valid for the duration of a call.
#pragma once

extern "C" {

// Receives a printer: its queue, what people call it (may be empty), and facts about it.
using KilnPrinterReceiver = void (*)(void* context, const char* name, const char* description, int isDefault,
                                     int printsBothSides);

// Lists the printers. Returns 0 and passes a reason, a template of a sentence or the service's words, to `fail` when
// the print service does not answer.
using KilnListPrinters = int (*)(KilnPrinterReceiver receiver, void (*fail)(void* context, const char* reason),
                                 void* context);

// A finished PDF file to print; `sides` is the standard keyword, null for what the printer does by itself. Texts are
// UTF-8, the file's path is in the system's encoding.
struct KilnPrintRequest {
  const char* printer;
  const char* title;
  const char* file;
  int copies;
  const char* sides;
};

// Sends the file to the printer. `progress` is called with the bytes sent and the size; it returns 0 to stop, and then
// the job is cancelled. Returns the job's number, or 0 after a stop or after passing such a reason to `fail`.
using KilnSendToPrinter = int (*)(const KilnPrintRequest* request,
                                  int (*progress)(void* context, long long done, long long total),
                                  void (*fail)(void* context, const char* reason), void* context);

// A queue of the print service. The reasons for its state are separated by commas; `description` is that of its printer
// (PPD), null where it has none.
struct KilnQueue {
  int isClass;
  int isTemporary;
  const char* stateReasons;
  const char* description;
  unsigned long long size;
};

// Reads a queue. Returns 0 and passes a reason as above when the print service does not answer; returns 1 and passes
// nothing to `receiver` when there is no such queue.
using KilnReadQueue = int (*)(const char* name, void (*receiver)(void* context, const KilnQueue* queue),
                              void (*fail)(void* context, const char* reason), void* context);

// Whether the print service can use a description: 0 after passing a reason.
using KilnCheckDescription = int (*)(const char* file, void (*fail)(void* context, const char* reason), void* context);

// Gives a queue the description in a file. Returns 0 and passes a reason when it has the old one still.
using KilnDescribeQueue = int (*)(const char* name, const char* file, void (*fail)(void* context, const char* reason),
                                  void* context);

}  // extern "C"

namespace Press {

inline constexpr const char* listPrintersSymbol = "kilnListPrinters";
inline constexpr const char* sendToPrinterSymbol = "kilnSendToPrinter";
inline constexpr const char* readQueueSymbol = "kilnReadQueue";
inline constexpr const char* checkDescriptionSymbol = "kilnCheckDescription";
inline constexpr const char* describeQueueSymbol = "kilnDescribeQueue";

}  // namespace Press
