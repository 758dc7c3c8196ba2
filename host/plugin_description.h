// What a plug-in needs from its host, as data: the file content/plugin.xml of its package. docs/formats.md describes
// it.
#pragma once

#include "host/chrome/addresses.h"
#include "host/documents/format.h"
#include "host/model/properties.h"
#include "host/ticket/tickets.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// Whether the plug-in fails without it.
enum class Need { mandatory, optional };

struct NeededName {
  std::u16string name;
  Need need;
};

struct PluginDescription {
  // The name for createPlugin.
  std::string name;

  // The version of the contract that it is built with, "2.0" for example.
  std::string contract;

  // The library's file name without a "lib" in front and without an ending.
  std::u16string library;

  std::vector<NeededName> properties;
  std::vector<NeededName> widgets;
  std::vector<NeededName> settings;
  std::vector<NeededName> customisation;

  // Whether the plug-in, its ticket schema included, knows the property.
  bool knowsProperty(std::u16string_view property) const;
};

// The format of a description.
extern const DocumentFormat pluginFormat;

// Throws std::runtime_error: one sentence with file and line.
PluginDescription readPluginDescription(const std::filesystem::path& file);

// The description of a library, from the packages; nothing when none describes it. Throws like readPluginDescription,
// also when two describe it.
std::optional<PluginDescription> describePlugin(const ChromeFolders& chrome, const std::filesystem::path& library);

// Throws std::runtime_error, one sentence with all of them, when the model lacks properties that the plug-in needs.
void demandProperties(const PluginDescription& plugin, const PropertyModel& model);

// Holds the model and the plug-in's ticket schema to the library's description, if there is one. Returns the name for
// createPlugin. Throws like describePlugin and demandProperties.
std::string expectPlugin(const ChromeFolders& chrome, const std::filesystem::path& library, const PropertyModel& model,
                         TicketService& tickets);

}  // namespace Refhost
