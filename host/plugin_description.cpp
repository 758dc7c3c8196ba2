#include "host/plugin_description.h"

#include "files/path_text.h"
#include "formats/letter_case.h"
#include "formats/names.h"
#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace Refhost {
namespace {

constexpr ElementFormat pluginElements[] = {{"plugin", "", "name! contract! library!"},
                                            {"property", "plugin", "name! need!"},
                                            {"widget", "plugin", "name! need!"},
                                            {"setting", "plugin", "name! need!"},
                                            {"customisation", "plugin", "name! need!"}};

// Whether it is MAJOR.MINOR.
bool isVersion(std::string_view text) {
  const auto isNumber = [](std::string_view part) {
    return !part.empty() && part.find_first_not_of("0123456789") == part.npos;
  };
  const auto dot = text.find('.');
  return dot != text.npos && isNumber(text.substr(0, dot)) && isNumber(text.substr(dot + 1));
}

// Whether the file has the library's name and any ending. Letter case does not count, as in file names on Windows.
bool isFileOf(std::u16string_view library, std::u16string_view file) {
  if (!Formats::isSameWithoutCase(file.substr(0, library.size()), library)) return false;
  return file.size() == library.size() || file[library.size()] == u'.';
}

// Reads one description; rejects unknown content with its position.
class PluginReader {
 public:
  explicit PluginReader(const std::filesystem::path& describingFile) : source(Files::shownPath(describingFile)) {}

  PluginDescription read(const XmlTree& tree) {
    demandFormat(pluginFormat, tree, source);
    const XmlElement& root = tree.element;
    plugin.name = *root.find("name");
    plugin.contract = *root.find("contract");
    plugin.library = Formats::toUtf16(*root.find("library"));
    if (!isVersion(plugin.contract)) fail(root, "contract is no version, such as \"2.0\".");
    if (plugin.name.empty() || plugin.library.empty()) fail(root, "name or library is empty.");
    for (const XmlTree& child : tree.children) readName(child.element);
    return std::move(plugin);
  }

 private:
  [[noreturn]] void fail(const XmlElement& element, std::string_view what) const {
    throw std::runtime_error(located(source, element.line, what));
  }

  void readName(const XmlElement& element) {
    const std::string& name = *element.find("name");
    if (!known.insert({element.name, name}).second)
      fail(element, "the " + element.name + " " + name + " stands twice.");
    namesOf(element.name).push_back({Formats::toUtf16(name), needOf(element)});
  }

  std::vector<NeededName>& namesOf(std::string_view kind) {
    if (kind == "property") return plugin.properties;
    if (kind == "widget") return plugin.widgets;
    if (kind == "setting") return plugin.settings;
    return plugin.customisation;
  }

  Need needOf(const XmlElement& element) const {
    const std::string& need = *element.find("need");
    if (need != "mandatory" && need != "optional") fail(element, "need is neither \"mandatory\" nor \"optional\".");
    return need == "mandatory" ? Need::mandatory : Need::optional;
  }

  std::string source;
  PluginDescription plugin;
  std::set<std::pair<std::string, std::string>> known;  // kinds and names
};

}  // namespace

constinit const DocumentFormat pluginFormat{"", pluginElements};

bool PluginDescription::knowsProperty(std::u16string_view property) const {
  return std::any_of(properties.begin(), properties.end(),
                     [property](const NeededName& known) { return known.name == property; });
}

PluginDescription readPluginDescription(const std::filesystem::path& file) {
  return PluginReader(file).read(readXmlTree(file, XmlLimits()));
}

std::optional<PluginDescription> describePlugin(const ChromeFolders& chrome, const std::filesystem::path& library) {
  constexpr std::u16string_view prefix = u"lib";
  const std::u16string file = library.filename().u16string();
  const auto plainName = Formats::isSameWithoutCase(std::u16string_view(file).substr(0, prefix.size()), prefix)
                             ? std::u16string_view(file).substr(prefix.size())
                             : std::u16string_view(file);
  std::optional<PluginDescription> found;
  for (const std::string& package : chrome.packages()) {
    const auto place = chrome.file(u"chrome://" + Formats::toUtf16(package) + u"/content/plugin.xml");
    if (std::error_code error; !place || !std::filesystem::exists(*place, error)) continue;
    PluginDescription plugin = readPluginDescription(*place);
    if (!isFileOf(plugin.library, file) && !isFileOf(plugin.library, plainName)) continue;
    if (found)
      throw std::runtime_error(Files::shownPath(*place) + " describes the library " + Formats::toUtf8(plugin.library) +
                               ", which another package describes already.");
    found = std::move(plugin);
  }
  return found;
}

void demandProperties(const PluginDescription& plugin, const PropertyModel& model) {
  std::string lacked;
  for (const auto& [name, need] : plugin.properties)
    if (need == Need::mandatory && !model.isKnown(name)) lacked += (lacked.empty() ? "" : ", ") + Formats::toUtf8(name);
  if (!lacked.empty())
    throw std::runtime_error("The model " + Formats::toUtf8(model.description().name) +
                             " lacks properties that the plug-in " + plugin.name + " needs: " + lacked + ".");
}

std::string expectPlugin(const ChromeFolders& chrome, const std::filesystem::path& library, const PropertyModel& model,
                         TicketService& tickets) {
  const auto plugin = describePlugin(chrome, library);
  if (!plugin) return std::string(Formats::pluginName);
  demandProperties(*plugin, model);
  tickets.onlyKnows([plugin](std::u16string_view property) { return plugin->knowsProperty(property); });
  return plugin->name;
}

}  // namespace Refhost
