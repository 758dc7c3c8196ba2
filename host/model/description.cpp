#include "host/model/description.h"

#include "files/path_text.h"
#include "formats/near_names.h"
#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

char lowered(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

bool isOption(const PropertyDescription& property, const std::u16string& value) {
  return property.options.empty() ||
         std::find(property.options.begin(), property.options.end(), value) != property.options.end();
}

// Finds descriptions: shipped ones by name, all others by path.
class Models {
 public:
  explicit Models(const Files::LayeredFolder& shippedFolder) : shipped(shippedFolder), names(shippedModels(shipped)) {}

  // The file of a model; nothing when there is none. A path is one from `folder`, where the ending may be left out.
  std::optional<fs::path> file(const std::string& nameOrPath, const fs::path& folder = {}) const {
    std::string name = nameOrPath;
    std::transform(name.begin(), name.end(), name.begin(), lowered);
    if (std::find(names.begin(), names.end(), name) != names.end())
      return shipped.find(Formats::toUtf16(name + ".xml"));
    const fs::path path = folder / fs::path(Formats::toUtf16(nameOrPath));
    std::error_code error;
    if (folder.empty()) return fs::exists(path, error) ? std::optional(path) : std::nullopt;
    for (const fs::path& candidate : {path, fs::path(path).concat(".xml")})
      if (fs::is_regular_file(candidate, error)) return candidate;
    return {};
  }

  // The end of a sentence about a model that there is not.
  std::string otherThan(const std::string& wanted) const {
    std::string known;
    for (const std::string& name : names) known += (known.empty() ? "" : ", ") + name;
    return "no model " + wanted + ": name one of " + known + ", or a file." + Formats::didYouMean(names, wanted);
  }

 private:
  const Files::LayeredFolder& shipped;
  std::vector<std::string> names;
};

// Reads one description, after the one that it extends; rejects unknown content with its position.
class ModelReader {
 public:
  // `extenders`: the files that extend this one, directly or by way of others.
  ModelReader(const Models& allModels, fs::path modelFile, std::vector<fs::path> extenders)
      : models(allModels),
        file(std::move(modelFile)),
        lineage(std::move(extenders)) {
    lineage.push_back(file);
  }

  ModelDescription read() {
    const XmlTree tree = readXmlTree(file, XmlLimits());
    demandFormat(modelFormat, tree, Files::shownPath(file));
    const bool isWhole = tree.element.find("extends") == nullptr;
    if (!isWhole) readBase(tree.element);
    if (isWhole || tree.element.find("name") != nullptr) model.name = demand(tree.element, "name");
    if (isWhole || tree.element.find("label") != nullptr) model.label = demand(tree.element, "label");
    for (const XmlTree& child : tree.children) readPart(child);
    for (const XmlTree& child : tree.children)
      if (child.element.find("feature") != nullptr) property(child.element, "feature");
    model.rules.insert(model.rules.begin(), inherited.begin(), inherited.end());
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

  // A name of its own keeps the settings of the two apart.
  void readBase(const XmlElement& element) {
    const std::string wanted = Formats::toUtf8(demand(element, "extends"));
    const auto base = models.file(wanted, Files::folderOf(file));
    if (!base) fail(element, "there is " + models.otherThan(wanted));
    std::error_code error;
    for (const fs::path& extender : lineage)
      if (fs::equivalent(extender, *base, error))
        fail(element, "the model extends " + (extender == file ? "itself." : wanted + ", which extends it."));
    model = ModelReader(models, *base, lineage).read();
    inherited = std::exchange(model.rules, {});
    model.name = file.stem().u16string();
  }

  PropertyDescription* find(const std::u16string& name) {
    const auto found = std::find_if(model.properties.begin(), model.properties.end(),
                                    [&name](const auto& candidate) { return candidate.name == name; });
    return found == model.properties.end() ? nullptr : &*found;
  }

  // The property in an attribute; must be declared before.
  PropertyDescription& property(const XmlElement& element, std::string_view attribute) {
    const auto name = demand(element, attribute);
    PropertyDescription* found = find(name);
    if (found == nullptr) fail(element, "there is no property " + Formats::toUtf8(name) + ".");
    return *found;
  }

  void demandOption(const XmlElement& element, const PropertyDescription& target, const std::u16string& value) const {
    if (!isOption(target, value))
      fail(element, Formats::toUtf8(target.name) + " has no option " + Formats::toUtf8(value) + ".");
  }

  void readPart(const XmlTree& part) {
    if (part.element.name == "property") {
      readProperty(part);
    } else if (part.element.name == "value") {
      readValue(part.element);
    } else {
      readRule(part);
    }
  }

  void readProperty(const XmlTree& part) {
    PropertyDescription made{demand(part.element, "name"), demand(part.element, "value"), {}, isContext(part.element)};
    if (!declared.insert(made.name).second)
      fail(part.element, "the property " + Formats::toUtf8(made.name) + " stands twice.");
    if (const std::string* feature = part.element.find("feature")) made.feature = Formats::toUtf16(*feature);
    for (const XmlTree& child : part.children) {
      auto option = demand(child.element, "value");
      if (std::find(made.options.begin(), made.options.end(), option) != made.options.end())
        fail(child.element, "the option " + Formats::toUtf8(option) + " stands twice.");
      made.options.push_back(std::move(option));
    }
    demandOption(part.element, made, made.defaultValue);
    if (PropertyDescription* former = find(made.name)) {
      replace(part.element, *former, std::move(made));
    } else {
      model.properties.push_back(std::move(made));
    }
  }

  // Replaces an inherited property and the inherited rules about it.
  void replace(const XmlElement& element, PropertyDescription& former, PropertyDescription made) {
    std::erase_if(inherited, [&made](const RuleDescription& rule) { return rule.property == made.name; });
    for (const RuleDescription& rule : inherited)
      for (const RuleDescription::Condition& condition : rule.conditions)
        if (condition.property == made.name && !isOption(made, condition.value))
          fail(element, "a rule of " + Formats::toUtf8(rule.property) + " needs the option " +
                            Formats::toUtf8(condition.value) + " of " + Formats::toUtf8(made.name) + ".");
    former = std::move(made);
  }

  bool isContext(const XmlElement& element) const {
    const std::string* context = element.find("context");
    if (context == nullptr || *context == "false") return false;
    if (*context != "true") fail(element, "context is neither \"true\" nor \"false\".");
    return true;
  }

  void readValue(const XmlElement& element) {
    PropertyDescription& changed = property(element, "of");
    auto value = demand(element, "is");
    demandOption(element, changed, value);
    if (!declared.insert(changed.name).second)
      fail(element, "the value of " + Formats::toUtf8(changed.name) + " stands twice.");
    changed.defaultValue = std::move(value);
  }

  void readRule(const XmlTree& part) {
    const PropertyDescription& target = property(part.element, "unavailable");
    RuleDescription rule{target.name, demand(part.element, "option"), {}};
    if (target.options.empty())
      fail(part.element, Formats::toUtf8(target.name) + " has no option " + Formats::toUtf8(rule.option) + ".");
    demandOption(part.element, target, rule.option);
    for (const XmlTree& child : part.children) {
      const PropertyDescription& condition = property(child.element, "property");
      rule.conditions.push_back({condition.name, demand(child.element, "is")});
      demandOption(child.element, condition, rule.conditions.back().value);
    }
    std::erase_if(inherited, [&rule](const RuleDescription& former) {
      return former.property == rule.property && former.option == rule.option;
    });
    model.rules.push_back(std::move(rule));
  }

  const Models& models;
  fs::path file;
  std::vector<fs::path> lineage;
  ModelDescription model;
  std::vector<RuleDescription> inherited;
  std::set<std::u16string> declared;  // the properties whose value is set in this file
};

constexpr ElementFormat modelElements[] = {
    {"model", "", "name label extends"},       {"property", "model", "name! value! context feature"},
    {"option", "property", "value!"},          {"value", "model", "of! is!"},
    {"rule", "model", "unavailable! option!"}, {"when", "rule", "property! is!"}};

}  // namespace

constinit const DocumentFormat modelFormat{"", modelElements};

ModelDescription readModel(const Files::LayeredFolder& shipped, const std::string& nameOrPath) {
  const Models models(shipped);
  const auto file = models.file(nameOrPath);
  if (!file) throw std::runtime_error("There is " + models.otherThan(nameOrPath));
  return ModelReader(models, *file, {}).read();
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
