// kiln watermark: lists, makes, changes and deletes the user's watermarks through the plug-in, as in the preferences.
#include "app/commands/commands.h"
#include "app/messages.h"
#include "app/shown_items.h"
#include "app/silent_run.h"
#include "app/watermark_editor.h"
#include "formats/names.h"
#include "formats/near_names.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/gui.h"
#include "host/widgets/list.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

namespace App {
namespace {

namespace WidgetId = Formats::WidgetId;

constexpr std::string_view footer = Formats::sentenceTemplate(
    R"(Everything goes through the plug-in's own editor, with its rules.

Examples:
  kiln watermark list
  kiln watermark add "For review" --size 72 --colour "#FF0000" --angle 45
  kiln watermark edit "For review" --place top --transparency 60
  kiln watermark delete "For review"

Exit status: 0 when it was done, 1 when it was not, and every watermark is as it was,
2 when the preferences cannot be opened or the command line is wrong.)");

struct WatermarkOptions {
  HostOptions host;
  std::string name;
  WatermarkEdit edit;
  bool replaces = false;
};

Refhost::Options resolve(const WatermarkOptions& given) {
  SettingOptions settings;
  settings.host = given.host;
  const Interruption interruption;
  return Opening(settings, interruption).options();
}

template <class Kind>
Kind& onTab(SilentRun& run, Formats::Name id) {
  return demandWidget<Kind>(*run.preferences().gui(), id);
}

Refhost::SelectorNode& listIn(SilentRun& run) { return onTab<Refhost::SelectorNode>(run, WidgetId::watermarkList); }

// Without the entry for none.
std::vector<ShownItem> watermarksIn(SilentRun& run) {
  std::vector<ShownItem> items = shownItems(listIn(run));
  std::erase_if(items, [](const ShownItem& item) { return item.value == Formats::noneId; });
  return items;
}

bool isDownloaded(const ShownItem& item) { return item.value.ends_with(Formats::downloadedEnding); }

int list(const WatermarkOptions& given) {
  SilentRun run(resolve(given));
  for (const ShownItem& watermark : watermarksIn(run))
    std::cout << Formats::printable(watermark.name) << (isDownloaded(watermark) ? "\tdownloaded" : "") << '\n';
  return 0;
}

// Chooses the user's own watermark with that name in the list, or else the downloaded one.
void chooseNamed(SilentRun& run, const std::string& word) {
  const std::vector<ShownItem> all = watermarksIn(run);
  std::vector<std::string> names;
  for (const ShownItem& each : all) names.push_back(each.name);
  const std::string name = nameMeant(names, word);
  auto found = std::ranges::find_if(all, [&](const auto& each) { return each.name == name && !isDownloaded(each); });
  if (found == all.end()) found = std::ranges::find(all, name, &ShownItem::name);
  if (found == all.end())
    throw std::runtime_error(
        Formats::sentence("There is no watermark {1}; \"kiln watermark list\" lists them.", inQuotes(name)) +
        Formats::didYouMean(names, name));
  auto& list = listIn(run);
  run.act([&] { list.choose(found->index); });
  if (list.selection() != found->index)
    throw std::runtime_error(Formats::sentence("The watermark {1} cannot be chosen now.", inQuotes(name)));
}

// Presses the button, and accepts the editor that it opens.
void runEditor(SilentRun& run, Formats::Name button, const WatermarkOptions& given) {
  bool isAccepted = false;
  bool isNameTaken = false;
  const auto operate = [&](Refhost::Dialog& dialog) {
    if (dialog.url() == Formats::Address::watermarkEditor) {
      isAccepted = editWatermark(dialog, given.edit);
    } else if (dialog.url() == Formats::Address::overwrite) {
      isNameTaken = !given.replaces;
      if (given.replaces) dialog.accept();
    }
  };
  run.act([&] { onTab<Refhost::Button>(run, button).click(); }, operate);
  if (isAccepted) return;
  throw std::runtime_error(isNameTaken
                               ? Formats::sentence("There is a watermark of that name already; --replace replaces it.")
                               : Formats::sentence("The watermark cannot be edited now."));
}

int add(const WatermarkOptions& given) {
  WatermarkOptions wanted = given;
  wanted.edit.text = given.name;
  demandWatermarkText(given.name);
  given.edit.look.demandValid();
  SilentRun run(resolve(given));
  if (!onTab<Refhost::Button>(run, WidgetId::watermarkAdd).isOperable())
    throw std::runtime_error(Formats::sentence("There is no room for another watermark; delete one first."));
  runEditor(run, WidgetId::watermarkAdd, wanted);
  return 0;
}

int edit(const WatermarkOptions& given) {
  const WatermarkEdit& wanted = given.edit;
  if (wanted.text) demandWatermarkText(*wanted.text);
  wanted.look.demandValid();
  SilentRun run(resolve(given));
  chooseNamed(run, given.name);
  if (!onTab<Refhost::Button>(run, WidgetId::watermarkEdit).isOperable())
    throw std::runtime_error(Formats::sentence("The watermark {1} cannot be changed now.", inQuotes(given.name)));
  runEditor(run, WidgetId::watermarkEdit, given);
  return 0;
}

int remove(const WatermarkOptions& given) {
  SilentRun run(resolve(given));
  chooseNamed(run, given.name);
  bool isConfirmed = false;
  run.act([&] { onTab<Refhost::Button>(run, WidgetId::watermarkDelete).click(); },
          [&](Refhost::Dialog& dialog) { isConfirmed = dialog.accept(); });
  if (!isConfirmed)
    throw std::runtime_error(Formats::sentence("The watermark {1} cannot be deleted now.", inQuotes(given.name)));
  return 0;
}

CLI::App& addPart(CLI::App& watermark, Run& run, const char* name, const std::string& help,
                  const std::shared_ptr<WatermarkOptions>& given, int (*work)(const WatermarkOptions&)) {
  CLI::App& part = *watermark.add_subcommand(name, help);
  part.callback([&run, given, work] { run = [given, work] { return work(*given); }; });
  return part;
}

void declareEdit(CLI::App& part, WatermarkOptions& given) {
  part.add_option_function<std::string>(
          "--name", [&given](const std::string& word) { given.edit.name = word; },
          Formats::sentence("Its name in the list, where a watermark has one besides its text"))
      ->type_name("NAME");
  part.add_flag("--replace", given.replaces, Formats::sentence("Replaces another watermark of that name"));
  given.edit.look.declare(part, "--");
}

}  // namespace

void addWatermark(CLI::App& kiln, Run& run) {
  const std::string homeHelp =
      Formats::sentence("The folder for what a user keeps; by default the one that \"kiln show\" uses");
  CLI::App& watermark =
      *kiln.add_subcommand("watermark", Formats::sentence("Lists, makes, changes and deletes watermarks"));
  watermark.footer(Formats::sentence(footer));
  watermark.require_subcommand(1);

  const auto listed = std::make_shared<WatermarkOptions>();
  listed->host.declare(
      addPart(watermark, run, "list", Formats::sentence("Lists the watermarks, one a line"), listed, list), homeHelp);

  const auto added = std::make_shared<WatermarkOptions>();
  CLI::App& addition = addPart(watermark, run, "add", Formats::sentence("Makes a watermark"), added, add);
  addition.add_option("TEXT", added->name, Formats::sentence("What it prints"))->required()->type_name("");
  declareEdit(addition, *added);
  added->host.declare(addition, homeHelp);

  const auto edited = std::make_shared<WatermarkOptions>();
  CLI::App& change = addPart(watermark, run, "edit", Formats::sentence("Changes a watermark"), edited, edit);
  change.add_option("NAME", edited->name, Formats::sentence("The watermark's name"))->required()->type_name("");
  change
      .add_option_function<std::string>(
          "--text", [edited](const std::string& text) { edited->edit.text = text; },
          Formats::sentence("What it prints"))
      ->type_name("TEXT");
  declareEdit(change, *edited);
  edited->host.declare(change, homeHelp);

  const auto deleted = std::make_shared<WatermarkOptions>();
  CLI::App& deletion = addPart(watermark, run, "delete", Formats::sentence("Deletes a watermark"), deleted, remove);
  deletion.add_option("NAME", deleted->name, Formats::sentence("The watermark's name"))->required()->type_name("");
  deleted->host.declare(deletion, homeHelp);
}

}  // namespace App
