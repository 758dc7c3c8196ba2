// Commands that create sample files: a sample job, a picture of a page.
#include "app/commands/commands.h"
#include "app/host_options.h"
#include "app/password_file.h"
#include "files/disk.h"
#include "files/whole_file.h"
#include "formats/sentences.h"
#include "press/job/print.h"
#include "press/job/sample.h"
#include "press/pictures/loader.h"

#include <memory>

namespace App {
namespace {

struct PictureOptions {
  std::string in;
  std::string out;
  std::string passwordFile;
  int page = 1;
  double dpi = 96;
};

}  // namespace

void addSample(CLI::App& kiln, Run& run) {
  const auto out = std::make_shared<std::string>();
  CLI::App& command = *kiln.add_subcommand("sample", Formats::sentence("Writes a sample job of four pages"));
  command.add_option("OUT.pdf", *out, Formats::sentence("The sample job; an existing file is replaced"))
      ->required()
      ->type_name("");
  command.callback([&run, out] {
    run = [out] {
      const auto target = Files::linkTarget(toPath(*out));
      Files::sweepBeside(Files::realDisk(), target);
      Files::replaceWhole(Files::realDisk(), target, Press::samplePdf());
      return 0;
    };
  });
}

void addPicture(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<PictureOptions>();
  CLI::App& command = *kiln.add_subcommand("picture", Formats::sentence("Draws a page of a PDF into a picture"));
  command.add_option("IN.pdf", given->in, Formats::sentence("The job"))->required()->type_name("");
  command.add_option("OUT.png", given->out, Formats::sentence("The picture; an existing file is replaced"))
      ->required()
      ->type_name("");
  command.add_option("--page", given->page, Formats::sentence("The page"))->type_name("N")->capture_default_str();
  command.add_option("--dpi", given->dpi, Formats::sentence("Pixels to an inch"))
      ->type_name("N")
      ->capture_default_str();
  addPasswordFile(command, given->passwordFile);
  command.callback([&run, given] {
    run = [given] {
      try {
        const Press::JobFile job(toPath(given->in), passwordIn(given->passwordFile));
        const std::string page = Press::printPage(job, given->page, Press::Effects());
        Press::drawPageToPng(page, 1, given->dpi, toPath(given->out));
      } catch (const Press::Error& error) {
        throw std::runtime_error(inWordsOfCommands(error));
      }
      return 0;
    };
  });
}

}  // namespace App
