#include "tests/ticket/validity.h"

#include "host/documents/xml.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace Testing {
namespace {

using Refhost::XmlElement;

const std::string framework = "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
const std::string keywords = "http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
const std::string instance = "http://www.w3.org/2001/XMLSchema-instance";
const std::string dataTypes = "http://www.w3.org/2001/XMLSchema";

struct Element {
  XmlElement xml;
  std::vector<Element> children;
  std::string text;
};

class Builder final : public Refhost::XmlHandler {
 public:
  void startElement(XmlElement element) override { open.push_back({std::move(element), {}, {}}); }
  void endElement() override {
    Element closed = std::move(open.back());
    open.pop_back();
    (open.empty() ? root : open.back().children.emplace_back()) = std::move(closed);
  }
  void text(std::string_view characters) override { open.back().text += characters; }

  Element root;

 private:
  std::vector<Element> open;
};

struct Rule {
  std::set<std::string> attributes;
  std::set<std::string> children;
};

class Checker {
 public:
  std::vector<std::string> check(const Element& root) {
    isTicket = root.xml.name == "PrintTicket";
    if (root.xml.nameSpace != framework || !(isTicket || root.xml.name == "PrintCapabilities"))
      fault(root, "is neither PrintTicket nor PrintCapabilities of the framework");
    if (const auto* version = root.xml.find("version"); version == nullptr || *version != "1")
      fault(root, "has no version 1");
    checkElement(root);
    for (const auto& [name, element] : referred)
      if (!defined.contains(name)) fault(*element, "refers to a parameter that is not there: " + name);
    return faults;
  }

 private:
  using Prefixes = std::map<std::string, std::string>;

  void fault(const Element& element, const std::string& what) {
    faults.push_back(std::to_string(element.xml.line) + ": " + element.xml.name + " " + what);
  }

  const Rule& ruleOf(const std::string& name) const {
    static const std::map<std::string, Rule> rules = {
        {"PrintTicket", {{"version"}, {"Feature", "ParameterInit", "Property"}}},
        {"PrintCapabilities", {{"version"}, {"Feature", "ParameterDef", "Property"}}},
        {"Feature", {{"name"}, {"Feature", "Option", "Property"}}},
        {"Option", {{"name", "constrained"}, {"Property", "ScoredProperty"}}},
        {"ScoredProperty", {{"name"}, {"Property", "ScoredProperty", "Value", "ParameterRef"}}},
        {"Property", {{"name"}, {"Property", "Value"}}},
        {"ParameterInit", {{"name"}, {"Value"}}},
        {"ParameterDef", {{"name"}, {"Property"}}},
        {"ParameterRef", {{"name"}, {}}},
        {"Value", {}}};
    static const Rule ticketOption = {{"name"}, {"Property", "ScoredProperty"}};
    static const Rule nothing;
    if (name == "Option" && isTicket) return ticketOption;
    const auto found = rules.find(name);
    return found == rules.end() ? nothing : found->second;
  }

  // Does something where the element's own declarations count, of which most elements have none.
  template <class Work>
  void withPrefixesOf(const Element& element, const Work& work) {
    if (element.xml.declarations.empty()) return work();
    const Prefixes around = prefixes;
    for (const auto& [prefix, nameSpace] : element.xml.declarations) prefixes[prefix] = nameSpace;
    work();
    prefixes = around;
  }

  void checkElement(const Element& element) {
    withPrefixesOf(element, [&] {
      const Rule& rule = ruleOf(element.xml.name);
      checkAttributes(element, rule);
      checkChildren(element, rule);
      checkNumbers(element);
      if (element.xml.name == "Value") checkValue(element);
      for (const Element& child : element.children) checkElement(child);
    });
  }

  void checkAttributes(const Element& element, const Rule& rule) {
    for (const auto& attribute : element.xml.attributes) {
      const bool isType = element.xml.name == "Value" && attribute.nameSpace == instance && attribute.name == "type";
      if (!isType && (!attribute.nameSpace.empty() || !rule.attributes.contains(attribute.name)))
        fault(element, "has an attribute " + attribute.name);
    }
    if (const auto* constrained = element.xml.find("constrained")) {
      const std::set<std::string> allowed = {"None", "PrintTicketSettings", "AdminSettings", "DeviceSettings"};
      const auto name = resolved(*constrained);
      if (!name || !name->starts_with(keywords) || !allowed.contains(name->substr(keywords.size() + 1)))
        fault(element, "is constrained by " + *constrained);
    }
    if (!rule.attributes.contains("name")) return;
    const auto name = nameOf(element);
    // Only an Option of the Print Schema itself can go without a name.
    if (!name && !(element.xml.name == "Option" && element.xml.find("name") == nullptr))
      fault(element, "has no name with a declared prefix");
    if (!name) return;
    if (element.xml.name == "ParameterRef") referred.emplace_back(*name, &element);
    if (element.xml.name == "ParameterInit" || element.xml.name == "ParameterDef") defined.insert(*name);
  }

  void checkChildren(const Element& element, const Rule& rule) {
    const bool isBlank = element.text.find_first_not_of(" \t\r\n") == std::string::npos;
    if (element.xml.name != "Value" && !isBlank) fault(element, "has text");
    std::set<std::string> names;
    for (const Element& child : element.children) {
      if (child.xml.nameSpace != framework || !rule.children.contains(child.xml.name))
        fault(child, "does not belong into " + element.xml.name);
      const auto name = nameOf(child);
      const bool isUnique = !name || child.xml.name == "Option" || names.insert(child.xml.name + *name).second;
      if (!isUnique) fault(child, "has a name that stands twice");
    }
  }

  static std::ptrdiff_t count(const Element& element, const std::string& name) {
    return std::count_if(element.children.begin(), element.children.end(),
                         [&](const Element& child) { return child.xml.name == name; });
  }

  void checkNumbers(const Element& element) {
    const std::string& name = element.xml.name;
    const std::ptrdiff_t values = count(element, "Value");
    if (name == "ParameterInit" && values != 1) fault(element, "has not one Value");
    if (name == "Property" && values > 1) fault(element, "has more than one Value");
    if (name == "ScoredProperty" && values + count(element, "ParameterRef") != 1)
      fault(element, "has not one Value or ParameterRef");
    if (name == "Feature" && count(element, "Option") + count(element, "Feature") == 0)
      fault(element, "has neither Option nor Feature");
    if (name == "Feature" && isTicket && count(element, "Option") > 1) fault(element, "has more than one Option");
    if (name == "ParameterDef") checkDefinition(element);
  }

  void checkDefinition(const Element& element) {
    std::map<std::string, const Element*> properties;
    for (const Element& child : element.children)
      if (const auto* name = child.xml.find("name"); name != nullptr && child.children.size() == 1)
        properties[name->substr(name->find(':') + 1)] = &child.children.front();
    const auto isType = [&](const char* type) {
      return properties.contains("DataType") && resolved(properties["DataType"]->text) == dataTypes + ' ' + type;
    };
    std::vector<std::string> wanted = {"DataType", "DefaultValue", "Multiple", "Mandatory", "UnitType"};
    if (isType("integer")) wanted.insert(wanted.end(), {"MinValue", "MaxValue"});
    if (isType("string")) wanted.insert(wanted.end(), {"MinLength", "MaxLength"});
    if (!isType("integer") && !isType("string")) fault(element, "has no known DataType");
    for (const std::string& name : wanted)
      if (!properties.contains(name)) fault(element, "lacks " + name);
    if (isType("integer") && properties.contains("DefaultValue") && properties.contains("MinValue") &&
        properties.contains("MaxValue")) {
      const long standard = std::stol(properties["DefaultValue"]->text);
      if (standard < std::stol(properties["MinValue"]->text) || standard > std::stol(properties["MaxValue"]->text))
        fault(element, "has a DefaultValue beyond its range");
    }
  }

  void checkValue(const Element& element) {
    std::optional<std::string> type;
    for (const auto& attribute : element.xml.attributes)
      if (attribute.nameSpace == instance && attribute.name == "type") type = resolved(attribute.value);
    if (!type) {
      fault(element, "has no type");
    } else if (*type == dataTypes + " integer") {
      const bool isNumber =
          !element.text.empty() && element.text != "-" &&
          element.text.find_first_not_of("0123456789", element.text[0] == '-' ? 1 : 0) == std::string::npos;
      if (!isNumber) fault(element, "is no integer: " + element.text);
    } else if (*type == dataTypes + " QName") {
      if (!resolved(element.text)) fault(element, "is no QName: " + element.text);
    } else if (*type != dataTypes + " string" && *type != dataTypes + " decimal") {
      fault(element, "has an unknown type");
    }
  }

  // "NAMESPACE NAME"; nothing for a text without a declared prefix.
  std::optional<std::string> resolved(const std::string& text) const {
    const auto colon = text.find(':');
    if (colon == std::string::npos) return {};
    const auto found = prefixes.find(text.substr(0, colon));
    if (found == prefixes.end()) return {};
    return found->second + ' ' + text.substr(colon + 1);
  }

  // The element's own name; its own declarations count.
  std::optional<std::string> nameOf(const Element& element) {
    const auto* name = element.xml.find("name");
    if (name == nullptr) return {};
    std::optional<std::string> found;
    withPrefixesOf(element, [&] { found = resolved(*name); });
    return found;
  }

  bool isTicket = false;
  Prefixes prefixes;
  std::set<std::string> defined;
  std::vector<std::pair<std::string, const Element*>> referred;
  std::vector<std::string> faults;
};

}  // namespace

std::vector<std::string> faultsOf(std::string_view bytes) {
  Builder builder;
  Refhost::parseXml(bytes, "document", {std::size_t{64} << 20, 64, 2'000'000}, builder);
  return Checker().check(builder.root);
}

}  // namespace Testing
