#include "app/documents/values.h"

#include "app/shown_items.h"
#include "app/silent_run.h"
#include "app/system/user.h"
#include "app/watermark_look.h"
#include "files/language.h"
#include "formats/names.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/model/description.h"
#include "press/printers/printers.h"

#include <exception>
#include <map>
#include <system_error>

namespace App {
namespace {

HostOptions hostOptions(const GivenOptions& given) {
  HostOptions host;
  for (const auto& [name, value] : given) {
    if (name == "--model") host.model = value;
    if (name == "--plugin") host.plugin = value;
    if (name == "--home") host.home = value;
    if (name == "--resources") host.resources.push_back(value);
  }
  return host;
}

Values words(const std::vector<std::string>& all) {
  Values values;
  for (const std::string& word : all) values.words.push_back({word});
  return values;
}

// The items of a list on the tab. A home that is not there yet is not made either.
std::vector<ShownItem> listed(const GivenOptions& given, Formats::Name list) {
  Refhost::Options options = hostOptions(given).resolve();
  if (options.home.empty()) options.home = userFolder();
  std::error_code error;
  if (!std::filesystem::is_directory(options.home, error)) options.home.clear();  // a temporary one
  SilentRun run(options, [](std::string_view) {});
  return shownItems(demandWidget<Refhost::SelectorNode>(*run.preferences().gui(), list));
}

Values watermarks(const GivenOptions& given) {
  Values values;
  for (const ShownItem& item : listed(given, Formats::WidgetId::watermarkList))
    if (item.value != Formats::noneId) values.words.push_back({item.name});
  return values;
}

Values overlays(const GivenOptions& given) {
  constexpr std::int32_t firstOverlay = 2;  // after the entries for none and for several
  Values values;
  for (const ShownItem& item : listed(given, Formats::WidgetId::overlayList))
    if (item.index >= firstOverlay) values.words.push_back({item.name});
  return values;
}

Refhost::ModelDescription modelOf(const GivenOptions& given) {
  const Refhost::Options options = hostOptions(given).resolve();
  return Refhost::readModel(options.resources / "models", options.model);
}

Values modelNames(const GivenOptions& given) {
  Values values = words(Refhost::shippedModels(hostOptions(given).resolve().resources / "models"));
  values.files = Values::Files::some;
  values.endings = {".xml"};
  return values;
}

// NAME=VALUE for each property with listed options.
Values settings(const GivenOptions& given) {
  Values values;
  for (const Refhost::PropertyDescription& property : modelOf(given).properties) {
    if (property.isContext) continue;
    const std::string start = Formats::toUtf8(property.name) + '=';
    if (property.options.empty()) values.words.push_back({start});
    for (const std::u16string& option : property.options) values.words.push_back({start + Formats::toUtf8(option)});
  }
  return values;
}

// The properties that a job may be allowed to choose.
Values choosableNames(const GivenOptions& given) {
  Values values;
  for (const Refhost::PropertyDescription& property : modelOf(given).properties)
    if (!property.isContext && !property.options.empty()) values.words.push_back({Formats::toUtf8(property.name)});
  return values;
}

Values printers() {
  Values values;
  for (const Press::Printer& printer : Press::systemPrinters())
    values.words.push_back({printer.name, printer.description});
  return values;
}

Values files(std::vector<std::string> endings) {
  Values values;
  values.files = Values::Files::some;
  values.endings = std::move(endings);
  return values;
}

using Source = Values (*)(const GivenOptions&);

// Those that are known by name: of an option, or of a command and its argument.
const std::map<std::string, Source, std::less<>>& sources() {
  static const std::map<std::string, Source, std::less<>> all = {
      {"--allow", choosableNames},
      {"--locale", [](const GivenOptions&) { return words(Files::spokenLocales()); }},
      {"--mode",
       [](const GivenOptions&) {
         return words({std::string(Formats::modeDocProp), std::string(Formats::modePDC),
                       std::string(Formats::modePrePrint), "rootless"});
       }},
      {"--model", modelNames},
      {"--overlay", overlays},
      {"--pages", [](const GivenOptions&) { return words({"All", "Even", "Odd"}); }},
      {"--place", [](const GivenOptions&) { return words(watermarkPlaces()); }},
      {"--plugin", [](const GivenOptions&) { return files({".so"}); }},
      {"--printer", [](const GivenOptions&) { return printers(); }},
      {"--profile", [](const GivenOptions&) { return files({".zip"}); }},
      {"--property", settings},
      {"--set", settings},
      {"--sides",
       [](const GivenOptions&) { return words({std::begin(Press::sidesKeywords), std::end(Press::sidesKeywords)}); }},
      {"--style", [](const GivenOptions&) { return words(watermarkStyles()); }},
      {"--ticket", [](const GivenOptions&) { return files({".xml"}); }},
      {"--watermark", watermarks},
      {"--watermark-place", [](const GivenOptions&) { return words(watermarkPlaces()); }},
      {"--watermark-style", [](const GivenOptions&) { return words(watermarkStyles()); }},
      {"check LIBRARY", [](const GivenOptions&) { return files({".so"}); }},
      {"create FILE", [](const GivenOptions&) { return files({".pdf", ".png", ".jpg", ".jpeg"}); }},
      {"drive SCRIPT", [](const GivenOptions&) { return files({".drive"}); }},
      {"export FILE", [](const GivenOptions&) { return files({".zip"}); }},
      {"import FILE", [](const GivenOptions&) { return files({".zip"}); }},
      {"overlay NAME", overlays},
      {"queue QUEUE", [](const GivenOptions&) { return printers(); }},
      {"watermark NAME", watermarks},
  };
  return all;
}

// By the word that stands for the value in the help: DIR, FILE, or a file with its ending as OUT.png.
Values byType(const std::string& type) {
  Values values;
  if (type == "DIR") values.files = Values::Files::folders;
  if (type == "FILE") values.files = Values::Files::some;
  const std::size_t dot = type.rfind('.');
  if (dot != type.npos) values = files({type.substr(dot)});
  return values;
}

}  // namespace

Values valuesOf(const CLI::App& command, const CLI::Option& option, const GivenOptions& given) {
  const std::string name = option.get_name();
  std::vector<std::string> keys = {name, command.get_name() + ' ' + name};
  if (command.get_parent() != nullptr && command.get_name() != "create")
    keys.push_back(command.get_parent()->get_name() + ' ' + name);
  try {
    for (const std::string& key : keys)
      if (const auto source = sources().find(key); source != sources().end()) return source->second(given);
  } catch (const std::exception&) {  // nobody wants to read about it now
    return {};
  }
  return byType(option.get_positional() ? name : option.get_type_name());
}

}  // namespace App
