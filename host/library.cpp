#include "host/library.h"

#include "files/path_text.h"
#include "formats/sentences.h"

#include <stdexcept>
#include <string>

namespace Refhost {
namespace {

std::string shown(const Kiln::ContractVersion& version) {
  return std::to_string(version.major) + "." + std::to_string(version.minor);
}

}  // namespace

Library::Library(const std::filesystem::path& file) : path(file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error))
    throw std::runtime_error(Formats::sentence("There is no plug-in library {1}.", Files::shownPath(file)));
  try {
    module.emplace(file);
  } catch (const std::runtime_error& problem) {
    throw std::runtime_error(
        Formats::sentence("The plug-in library {1} cannot be loaded: {2}.", Files::shownPath(file), problem.what()));
  }
  factory = module->function<Kiln::CreatePlugin>("createPlugin");
  if (factory == nullptr)
    throw std::runtime_error(
        Formats::sentence("The library {1} is no plug-in: it exports no createPlugin.", Files::shownPath(file)));
}

Kiln::SmartPtr<Kiln::UIPlugin> Library::create(Kiln::Host& host, const Kiln::PropertyManager& manager,
                                               std::string_view name) {
  return factory(host, manager, text(name), nullptr, Kiln::SmartPtr<Kiln::Services::Library>(this));
}

void Library::demandSameContract(Kiln::Host& host) const {
  Kiln::VersionExchange versions;
  // A plug-in where null is due is of a library that does not look at names.
  const Kiln::SmartPtr<Kiln::UIPlugin> made(factory(host, nullptr, text(Kiln::versionQuestion), &versions, nullptr));
  const bool isTold = versions.plugin.major != 0;
  if (isTold && versions.plugin.worksWith(versions.host)) return;
  const std::string advice = versions.plugin.major > versions.host.major
                                 ? Formats::sentence("Use a program as new as the library.")
                                 : Formats::sentence("Build the library again, with this program's headers.");
  if (!isTold)
    throw std::runtime_error(
        Formats::sentence("The plug-in library {1} speaks version 1 of the plug-in contract, or none, and this program "
                          "version {2}: they do not work together. {3}",
                          Files::shownPath(path), shown(versions.host), advice));
  throw std::runtime_error(
      Formats::sentence("The plug-in library {1} speaks version {2} of the plug-in contract, and this program version "
                        "{3}: they do not work together. {4}",
                        Files::shownPath(path), shown(versions.plugin), shown(versions.host), advice));
}

std::string defaultPluginName() { return std::string("Zorvueffect") + Files::moduleEnding; }

}  // namespace Refhost
