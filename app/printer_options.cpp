#include "app/printer_options.h"

#include "app/messages.h"
#include "app/shown_items.h"
#include "formats/near_names.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace App {
namespace {

void demandPrinter(const std::string& wanted) {
  std::vector<std::string> names;
  for (const Press::Printer& printer : Press::systemPrinters()) names.push_back(printer.name);
  if (std::ranges::find(names, wanted) != names.end()) return;
  throw std::runtime_error("There is no printer " + inQuotes(wanted) +
                           (names.empty() ? "; the system has none." : "; there are " + listed(names) + '.') +
                           Formats::didYouMean(names, wanted));
}

std::optional<Press::Sides> sidesCalled(const std::string& keyword) {
  if (keyword.empty()) return {};
  const auto found = std::ranges::find(Press::sidesKeywords, keyword);
  if (found != std::end(Press::sidesKeywords))
    return static_cast<Press::Sides>(std::distance(std::begin(Press::sidesKeywords), found));
  const std::vector<std::string> keywords(std::begin(Press::sidesKeywords), std::end(Press::sidesKeywords));
  throw std::runtime_error("The sides cannot be " + inQuotes(keyword) + "; they can be " +
                           Formats::alternatives(keywords) + '.' + Formats::didYouMean(keywords, keyword));
}

}  // namespace

void PrinterOptions::declare(CLI::App& command) {
  CLI::Option* const target =
      command.add_option("--printer", printer, "A printer of the system to print on, in place of OUT.pdf")
          ->type_name("NAME");
  command.add_option("--copies", copies, "The number of copies; with --printer")
      ->type_name("N")
      ->check(CLI::Range(1, Press::mostCopies).description(""))
      ->needs(target);
  command
      .add_option("--sides", sides,
                  "one-sided, two-sided-long-edge or two-sided-short-edge; by default as the printer is set")
      ->type_name("SIDES")
      ->needs(target);
}

Press::PrinterJob PrinterOptions::resolve(const std::string& title) const {
  Press::PrinterJob job{printer, title, copies, sidesCalled(sides)};
  demandPrinter(printer);
  return job;
}

}  // namespace App
