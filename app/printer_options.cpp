#include "app/printer_options.h"

#include "app/host_options.h"
#include "app/messages.h"
#include "app/shown_items.h"
#include "formats/near_names.h"
#include "formats/sentences.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace App {
namespace {

void demandPrinter(const std::string& wanted) {
  std::vector<std::string> names;
  for (const Press::Printer& printer : Press::systemPrinters()) names.push_back(printer.name);
  if (std::ranges::find(names, wanted) != names.end()) return;
  const std::string sentence =
      names.empty() ? Formats::sentence("There is no printer {1}; the system has none.", inQuotes(wanted))
                    : Formats::sentence("There is no printer {1}; there are {2}.", inQuotes(wanted), listed(names));
  throw std::runtime_error(sentence + Formats::didYouMean(names, wanted));
}

std::optional<Press::Sides> sidesCalled(const std::string& keyword) {
  if (keyword.empty()) return {};
  const auto found = std::ranges::find(Press::sidesKeywords, keyword);
  if (found != std::end(Press::sidesKeywords))
    return static_cast<Press::Sides>(std::distance(std::begin(Press::sidesKeywords), found));
  const std::vector<std::string> keywords(std::begin(Press::sidesKeywords), std::end(Press::sidesKeywords));
  throw std::runtime_error(Formats::sentence("The sides cannot be {1}; they can be {2}.", inQuotes(keyword),
                                             Formats::alternatives(keywords)) +
                           Formats::didYouMean(keywords, keyword));
}

}  // namespace

void PrinterOptions::declare(CLI::App& command) {
  CLI::Option* const target =
      command
          .add_option("--printer", printer,
                      Formats::sentence("A printer of the system to print on, in place of OUT.pdf"))
          ->type_name("NAME")
          ->check(notEmpty(Formats::sentence("a printer has to be named")));
  command.add_option("--copies", copies, Formats::sentence("The number of copies; with --printer"))
      ->type_name("N")
      ->check(CLI::Range(1, Press::mostCopies).description(""))
      ->needs(target);
  command
      .add_option(
          "--sides", sides,
          Formats::sentence("one-sided, two-sided-long-edge or two-sided-short-edge; by default as the printer is set"))
      ->type_name("SIDES")
      ->needs(target);
}

Press::PrinterJob PrinterOptions::resolve(const std::string& title) const {
  Press::PrinterJob job{printer, title, copies, sidesCalled(sides)};
  demandPrinter(printer);
  return job;
}

}  // namespace App
