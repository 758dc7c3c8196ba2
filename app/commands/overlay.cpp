// kiln overlay: lists, renames and deletes the user's overlays through the plug-in, as in the preferences. Overlays are
// created where printing is available.
#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/messages.h"
#include "app/shown_items.h"
#include "app/silent_run.h"
#include "formats/names.h"
#include "formats/near_names.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/gui.h"
#include "host/overlay_names.h"
#include "host/widgets/list.h"

#include <iostream>
#include <memory>
#include <optional>
#include <vector>

namespace App {
namespace {

#ifdef KILN_WITHOUT_PRINTING
constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln overlay list
  kiln overlay rename Letterhead Stationery
  kiln overlay delete Stationery

Exit status: 0 when it was done, 1 when it was not, and every overlay is as it was,
2 when the preferences cannot be opened or the command line is wrong.)");
#else
constexpr std::string_view footer = Formats::sentenceTemplate(R"(Examples:
  kiln overlay create Letterhead letterhead.pdf
  kiln overlay create Logo logo.png --set PaperSize=Letter
  kiln overlay list
  kiln overlay rename Letterhead Stationery
  kiln overlay delete Stationery

Exit status: 0 when it was done, 1 when it was not, and every overlay is as it was,
2 when the preferences cannot be opened or the command line is wrong.)");
#endif

struct OverlayOptions {
  SettingOptions settings;
  std::string name;
  std::string newName;
};

struct Listed {
  std::int32_t index;
  std::string name;
  bool isDownloaded;
};

Refhost::ComboBox& listIn(SilentRun& run) {
  auto* list = dynamic_cast<Refhost::ComboBox*>(run.preferences().gui()->find(Formats::WidgetId::overlayList));
  if (list == nullptr) throw std::runtime_error(Formats::sentence("These preferences have no list of overlays."));
  return *list;
}

std::vector<Listed> overlaysIn(Refhost::ComboBox& list) {
  constexpr std::int32_t firstOverlay = 2;  // after the entries for none and for several
  std::vector<Listed> overlays;
  for (std::int32_t i = firstOverlay; i < list.items().count(); ++i) {
    const auto item = list.items().at(i);
    overlays.push_back({i, Formats::toUtf8(item->displayedText().view()), item->isMarked()});
  }
  return overlays;
}

int list(const OverlayOptions& given) {
  const Interruption interruption;
  const Opening opening(given.settings, interruption);
  SilentRun run(opening.options());
  for (const Listed& overlay : overlaysIn(listIn(run)))
    std::cout << Formats::printable(overlay.name) << (overlay.isDownloaded ? "\tdownloaded" : "") << '\n';
  return 0;
}

// The user's own overlay with that name, or else the downloaded one.
std::optional<Listed> overlayNamed(const std::vector<Listed>& overlays, const std::string& name) {
  for (const bool isDownloaded : {false, true})
    for (const Listed& overlay : overlays)
      if (overlay.name == name && overlay.isDownloaded == isDownloaded) return overlay;
  return {};
}

std::vector<std::string> namesOf(const std::vector<Listed>& overlays) {
  std::vector<std::string> names;
  for (const Listed& overlay : overlays) names.push_back(overlay.name);
  return names;
}

// The overlay that the user means. Throws std::runtime_error, one sentence, when there is none.
Listed demanded(const OverlayOptions& given, const std::vector<Listed>& overlays) {
  const std::string name = nameMeant(namesOf(overlays), given.name);
  const auto overlay = overlayNamed(overlays, name);
  if (!overlay)
    throw std::runtime_error(
        Formats::sentence("There is no overlay {1}; \"kiln overlay list\" lists them.", Formats::quoted(name)) +
        Formats::didYouMean(namesOf(overlays), name));
  return *overlay;
}

int rename(const OverlayOptions& given) {
  const Interruption interruption;
  const Opening opening(given.settings, interruption);
  SilentRun run(opening.options());
  const Listed overlay = demanded(given, overlaysIn(listIn(run)));
  Refhost::renameOverlay(run.preferences(), overlay.index, Formats::toUtf16(given.newName));
  return 0;
}

int remove(const OverlayOptions& given) {
  const Interruption interruption;
  const Opening opening(given.settings, interruption);
  SilentRun run(opening.options());
  Refhost::ComboBox& list = listIn(run);
  const Listed overlay = demanded(given, overlaysIn(list));
  const std::string& name = overlay.name;
  auto* button = dynamic_cast<Refhost::Button*>(run.preferences().gui()->find(Formats::WidgetId::overlayDelete));
  if (button == nullptr)
    throw std::runtime_error(Formats::sentence("These preferences have no button that deletes overlays."));
  bool isConfirmed = false;
  run.act([&] { list.choose(overlay.index); });
  if (list.selection() == overlay.index)
    run.act([button] { button->click(); }, [&](Refhost::Dialog& dialog) { isConfirmed = dialog.accept(); });
  if (!isConfirmed)
    throw std::runtime_error(Formats::sentence("The overlay {1} cannot be deleted now.", Formats::quoted(name)));
  const auto other = overlayNamed(overlaysIn(list), name);
  if (other && other->isDownloaded == overlay.isDownloaded)
    tell(Formats::sentence("Another overlay has the name {1} too; it stays, and takes its place.", inQuotes(name)));
  return 0;
}

CLI::App& addPart(CLI::App& overlay, Run& run, const char* name, const std::string& help,
                  const std::shared_ptr<OverlayOptions>& given, int (*work)(const OverlayOptions&)) {
  CLI::App& part = *overlay.add_subcommand(name, help);
  part.callback([&run, given, work] { run = [given, work] { return work(*given); }; });
  return part;
}

}  // namespace

void addOverlay(CLI::App& kiln, Run& run) {
  const std::string homeHelp =
      Formats::sentence("The folder for what a user keeps; by default the one that \"kiln show\" uses");
  CLI::App& overlay = *kiln.add_subcommand("overlay", Formats::sentence("Makes, lists, renames and deletes overlays"));
  overlay.footer(Formats::sentence(footer));
  overlay.require_subcommand(1);

#ifndef KILN_WITHOUT_PRINTING
  addOverlayCreation(overlay, run);
#endif

  const auto listed = std::make_shared<OverlayOptions>();
  CLI::App& listPart = addPart(overlay, run, "list", Formats::sentence("Lists the overlays, one a line"), listed, list);
  listed->settings.host.declare(listPart, homeHelp);

  const auto renamed = std::make_shared<OverlayOptions>();
  CLI::App& renamePart =
      addPart(overlay, run, "rename", Formats::sentence("Gives an overlay another name"), renamed, rename);
  renamePart.add_option("NAME", renamed->name, Formats::sentence("The overlay's name"))->required()->type_name("");
  renamePart.add_option("NEW-NAME", renamed->newName, Formats::sentence("Its name from now on"))
      ->required()
      ->type_name("");
  renamed->settings.host.declare(renamePart, homeHelp);

  const auto deleted = std::make_shared<OverlayOptions>();
  CLI::App& deletePart = addPart(overlay, run, "delete", Formats::sentence("Deletes an overlay"), deleted, remove);
  deletePart.add_option("NAME", deleted->name, Formats::sentence("The overlay's name"))->required()->type_name("");
  deleted->settings.host.declare(deletePart, homeHelp);
}

}  // namespace App
