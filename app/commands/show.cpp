#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/host_options.h"
#include "app/password_file.h"
#include "app/system/user.h"
#include "files/module.h"
#include "files/product_files.h"
#include "formats/sentences.h"
#include "window/window.h"

#include <memory>
#include <stdexcept>

namespace App {
namespace {

constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln show letter.pdf
  kiln show --model kvt --locale de-DE
  kiln show letter.pdf --page 2 --screenshot window.png      needs no display
  kiln show --press btn_WMAdd --screenshot editor.png
  kiln show --record session.drive                           replay it by kiln drive --expect

Exit status: 0 when the window was closed or the picture written, 1 when the picture cannot be written,
2 when the preferences cannot be opened or the command line is wrong.)");

struct ShowOptions {
  HostOptions host;
  std::string document;
  std::string passwordFile;
  std::string locale;
  std::string screenshot;
  std::string press;
  std::string record;
  std::vector<std::string> settings;
  int page = 1;
  bool inspector = false;
};

Window::Request toRequest(const ShowOptions& given) {
  Window::Request request;
  request.preferences = given.host.resolve();
  if (request.preferences.home.empty()) request.preferences.home = userFolder();
  request.preferences.locale = given.locale.empty()
                                   ? userLocale(Refhost::ChromeFolders(request.preferences.resources).locales("effect"))
                                   : given.locale;
  request.preferences.properties = toPairs("--set", given.settings);
  request.document = toPath(given.document);
  request.password = passwordIn(given.passwordFile);
  request.screenshot = toPath(given.screenshot);
  request.press = given.press;
  request.record = toPath(given.record);
  request.version = KILN_VERSION;
  request.page = given.page;
  request.inspector = given.inspector;
  return request;
}

// The window needs a windowing toolkit, which the other commands do not; so it is loaded on demand. It is never
// unloaded, which the toolkit does not support.
Window::Show* loadWindow() {
  const auto file = Files::productModule("kiln-window.so");
  try {
    Files::Module library(file);
    library.keepLoaded();
    if (auto* function = library.function<Window::Show>(Window::showSymbol)) return function;
  } catch (const std::runtime_error& problem) {
    throw Failure(cannotOpen, Formats::sentence("The window cannot be loaded: {1}.", problem.what()));
  }
  throw Failure(cannotOpen,
                Formats::sentence("{1} is not the window of this kiln; build both together.", file.string()));
}

int show(const ShowOptions& given) { return loadWindow()(toRequest(given)); }

}  // namespace

void addShow(CLI::App& kiln, Run& run) {
  const auto given = std::make_shared<ShowOptions>();
  CLI::App& command = *kiln.add_subcommand("show", Formats::sentence("Opens the printing preferences in a window"));
  command.footer(Formats::sentence(footer));
  command.add_option("FILE.pdf", given->document, Formats::sentence("The job to print; without it a sample job"))
      ->type_name("");
  command
      .add_option("--locale", given->locale,
                  Formats::sentence("The language, ja-JP for example; by default your system's"))
      ->type_name("NAME");
  command.add_option("--page", given->page, Formats::sentence("The page to look at first"))
      ->type_name("N")
      ->check(CLI::Range(1, 1000'000).description(""))
      ->capture_default_str();
  command.add_flag("--inspector", given->inspector, Formats::sentence("Opens the inspector of properties and trace"));
  command
      .add_option("--screenshot", given->screenshot,
                  Formats::sentence("Draws the window into this picture instead of showing it"))
      ->type_name("OUT.png");
  command
      .add_option("--press", given->press,
                  Formats::sentence("A button to press first; the picture is of the dialog that it opens"))
      ->type_name("ID");
  command
      .add_option("--record", given->record,
                  Formats::sentence("Writes what you do, and what is answered, to this drive script"))
      ->type_name("OUT.drive");
  addRepeatable(command, "--set", given->settings,
                Formats::sentence("A setting to open with, MirrorImage=MirrorImage; may be repeated"))
      ->type_name("NAME=VALUE");
  addPasswordFile(command, given->passwordFile);
  given->host.declare(
      command,
      Formats::sentence("The folder for what a user keeps; by default kiln in your data folder ($XDG_DATA_HOME)"));
  command.callback([&run, given] { run = [given] { return show(*given); }; });
}

}  // namespace App
