// The system's printers. The library that talks to them is loaded by the first call, so that everything else works
// where it is not installed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Press {

struct Printer {
  std::string name;         // of the queue
  std::string description;  // what people call it; may be empty
  bool isDefault = false;
  bool printsBothSides = false;
};

// The printers of this user, as the system lists them. Throws Error when it cannot be asked.
std::vector<Printer> systemPrinters();

// The sides of the paper to print on, by the keywords of the Internet Printing Protocol.
enum class Sides { one, twoAtLongEdge, twoAtShortEdge };
inline constexpr std::string_view sidesKeywords[] = {"one-sided", "two-sided-long-edge", "two-sided-short-edge"};

constexpr int mostCopies = 999;

// How to print a finished PDF.
struct PrinterJob {
  std::string printer;
  std::string title;
  int copies = 1;
  std::optional<Sides> sides = {};  // none for what the printer does by itself
};

// Sends a finished PDF to a printer; returns the job's name in the queue, "office-12" for example. `progress` takes the
// bytes sent and the size; the job is cancelled when it returns false. Throws Error, or Stopped after a cancellation.
std::string sendToPrinter(const std::filesystem::path& pdf, const PrinterJob& job,
                          const std::function<bool(std::int64_t done, std::int64_t total)>& progress);

}  // namespace Press
