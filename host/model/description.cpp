#include "host/model/description.h"

#include "files/path_text.h"
#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

char lowered(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

// Reads one description; rejects unknown content with its position.
class Reader {
 public:
  explicit Reader(const std::filesystem::path& modelFile) : file(modelFile) {}

  ModelDescription read(std::size_t generations) {
    const XmlTree tree = readXmlTree(file, XmlLimits());
    if (tree.element.name != "model") fail(tree.element, "the root is a <" + tree.element.name + ">, not a <model>.");
    if (const std::string* base = tree.element.find("extends")) {
      if (generations == 0) fail(tree.element, "the models extend one another too often.");
      model = Reader(file.parent_path() / Formats::toUtf16(*base + ".xml")).read(generations - 1);
    }
    model.name = demand(tree.element, "name");
    model.label = demand(tree.element, "label");
    for (const XmlTree& child : tree.children) readPart(child);
    for (const XmlTree& child : tree.children)
      if (child.element.find("feature") != nullptr) property(child.element, "feature");
    return std::move(model);
  }

 private:
  [[noreturn]] void fail(const XmlElement& element, std::string_view what) const {
    throw std::runtime_error(located(Files::shownPath(file), element.line, what));
  }

  std::u16string demand(const XmlElement& element, std::string_view attribute) const {
    const std::string* value = element.find(attribute);
    if (value == nullptr) fail(element, "<" + element.name + "> has no " + std::string(attribute) + ".");
    return Formats::toUtf16(*value);
  }

  // The property in an attribute; must be declared before.
  PropertyDescription& property(const XmlElement& element, std::string_view attribute) {
    const auto name = demand(element, attribute);
    const auto found = std::find_if(model.properties.begin(), model.properties.end(),
                                    [&name](const auto& candidate) { return candidate.name == name; });
    if (found == model.properties.end()) fail(element, "there is no property " + Formats::toUtf8(name) + ".");
    return *found;
  }

  void readPart(const XmlTree& part) {
    if (part.element.name == "property") {
      readProperty(part);
    } else if (part.element.name == "value") {
      property(part.element, "of").defaultValue = demand(part.element, "is");
    } else if (part.element.name == "rule") {
      readRule(part);
    } else {
      fail(part.element, "<" + part.element.name + "> is not known here.");
    }
  }

  void readProperty(const XmlTree& part) {
    PropertyDescription made{demand(part.element, "name"), demand(part.element, "value"), {}, false};
    const bool twice = std::any_of(model.properties.begin(), model.properties.end(),
                                   [&made](const auto& other) { return other.name == made.name; });
    if (twice) fail(part.element, "the property " + Formats::toUtf8(made.name) + " stands twice.");
    const std::string* context = part.element.find("context");
    made.isContext = context != nullptr && *context == "true";
    if (const std::string* feature = part.element.find("feature")) made.feature = Formats::toUtf16(*feature);
    for (const XmlTree& child : part.children) {
      if (child.element.name != "option") fail(child.element, "<" + child.element.name + "> is not known here.");
      made.options.push_back(demand(child.element, "value"));
    }
    model.properties.push_back(std::move(made));
  }

  void readRule(const XmlTree& part) {
    const PropertyDescription& target = property(part.element, "unavailable");
    RuleDescription rule{target.name, demand(part.element, "option"), {}};
    if (std::find(target.options.begin(), target.options.end(), rule.option) == target.options.end())
      fail(part.element, Formats::toUtf8(target.name) + " has no option " + Formats::toUtf8(rule.option) + ".");
    for (const XmlTree& child : part.children) {
      if (child.element.name != "when") fail(child.element, "<" + child.element.name + "> is not known here.");
      rule.conditions.push_back({property(child.element, "property").name, demand(child.element, "is")});
    }
    model.rules.push_back(std::move(rule));
  }

  std::filesystem::path file;
  ModelDescription model;
};

}  // namespace

ModelDescription readModel(const Files::LayeredFolder& shipped, const std::string& nameOrPath) {
  constexpr std::size_t generations = 4;
  std::string name = nameOrPath;
  std::transform(name.begin(), name.end(), name.begin(), lowered);
  const auto names = shippedModels(shipped);
  if (std::find(names.begin(), names.end(), name) != names.end())
    return Reader(shipped.find(Formats::toUtf16(name + ".xml"))).read(generations);
  const std::filesystem::path file(Formats::toUtf16(nameOrPath));
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    std::string known;
    for (const std::string& candidate : names) known += (known.empty() ? "" : ", ") + candidate;
    throw std::runtime_error("There is no model " + nameOrPath + ": name one of " + known + ", or a file.");
  }
  return Reader(file).read(generations);
}

std::vector<std::string> shippedModels(const Files::LayeredFolder& shipped) {
  std::vector<std::string> names;
  for (const auto& file : shipped.entries())
    if (file.extension() == ".xml") names.push_back(Formats::toUtf8(file.stem().u16string()));
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return std::pair(a != "standard", a) < std::pair(b != "standard", b);
  });
  return names;
}

}  // namespace Refhost
