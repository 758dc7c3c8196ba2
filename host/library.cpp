#include "host/library.h"

#include "files/path_text.h"

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
    throw std::runtime_error("There is no plug-in library " + Files::shownPath(file) + ".");
  try {
    module.emplace(file);
  } catch (const std::runtime_error& problem) {
    throw std::runtime_error("The plug-in library " + Files::shownPath(file) + " cannot be loaded: " + problem.what() +
                             ".");
  }
  factory = module->function<Kiln::CreatePlugin>("createPlugin");
  if (factory == nullptr)
    throw std::runtime_error("The library " + Files::shownPath(file) + " is no plug-in: it exports no createPlugin.");
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
  throw std::runtime_error("The plug-in library " + Files::shownPath(path) + " speaks " +
                           (isTold ? "version " + shown(versions.plugin) + " of the plug-in contract"
                                   : "version 1 of the plug-in contract, or none") +
                           ", and this program version " + shown(versions.host) + ": they do not work together. " +
                           (versions.plugin.major > versions.host.major
                                ? "Use a program as new as the library."
                                : "Build the library again, with this program's headers."));
}

std::string defaultPluginName() { return std::string("Zorvueffect") + Files::moduleEnding; }

}  // namespace Refhost
