#include "app/host_options.h"

#include "app/failure.h"
#include "app/system/installed_fonts.h"
#include "files/product_files.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/library.h"

namespace App {
namespace {

Files::LayeredFolder resourceFolders(const std::vector<std::string>& given) {
  if (given.empty()) return Files::productResources();
  std::vector<std::filesystem::path> folders;
  for (const std::string& folder : given) folders.push_back(toPath(folder));
  return Files::LayeredFolder(std::move(folders));
}

}  // namespace

void HostOptions::declare(CLI::App& command, const std::string& homeHelp) {
  command
      .add_option("--model", model,
                  Formats::sentence("A shipped model description by its name, or one of your own by its path"))
      ->type_name("NAME")
      ->default_str(Refhost::Options().model);
  command.add_option("--plugin", plugin, Formats::sentence("The plug-in library; by default the one of this kiln"))
      ->type_name("FILE");
  command
      .add_option("--marks", marks,
                  Formats::sentence("Watermarks and overlays for everybody, a folder for each source"))
      ->type_name("DIR")
      ->capture_default_str();
  declarePlaces(command, homeHelp);
}

void HostOptions::declarePlaces(CLI::App& command, const std::string& homeHelp) {
  command.add_option("--home", home, homeHelp)->type_name("DIR");
  addRepeatable(command, "--resources", resources,
                Formats::sentence("A folder to look for layouts, texts and models in; by default those of this kiln"))
      ->type_name("DIR");
}

Refhost::Options HostOptions::resolve() const {
  Refhost::Options options;
  options.plugin = plugin.empty() ? Files::productModule(Refhost::defaultPluginName()) : toPath(plugin);
  options.resources = resourceFolders(resources);
  if (!model.empty()) options.model = model;
  options.home = toPath(home);
  options.sharedData = toPath(marks);
  options.fonts = installedFonts;
  return options;
}

std::filesystem::path toPath(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::pair<std::u16string, std::u16string> toPair(const std::string& option, const std::string& word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos || equals == 0)
    throw Failure(wrongUsage, Formats::sentence("{1} takes NAME=VALUE, and {2} is not of that form.", option,
                                                Formats::quoted(word)));
  return {Formats::toUtf16(word.substr(0, equals)), Formats::toUtf16(word.substr(equals + 1))};
}

Refhost::TracePairs toPairs(const std::string& option, const std::vector<std::string>& words) {
  Refhost::TracePairs pairs;
  for (const std::string& word : words) pairs.push_back(toPair(option, word));
  return pairs;
}

CLI::Validator notEmpty(const std::string& clause) {
  return {[clause](const std::string& word) { return word.empty() ? clause : std::string(); }, ""};
}

CLI::Option* addRepeatable(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                           const std::string& help) {
  return command.add_option(name, values, help)->allow_extra_args(false);
}

}  // namespace App
