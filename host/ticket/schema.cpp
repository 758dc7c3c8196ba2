#include "host/ticket/schema.h"

#include "formats/text.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

namespace Refhost {
namespace {

constexpr std::string_view schemaNameSpace = "urn:kilnworks:ticket-schema:1";

constexpr ElementFormat schemaElements[] = {
    {"ticketSchema", "", ""},
    {"feature", "ticketSchema feature", "name! property! scope absent aliasOf"},
    {"option", "feature", "name! value!"},
    {"scored", "option", "name! parameter!"},
    {"parameter", "ticketSchema", "name! property! scope type! least most unit beyond standIn absent"},
    {"exact", "parameter feature", "name! least! most!"}};

// Reads one schema document. Validates every name, so that a schema is never ambiguous.
class SchemaReader {
 public:
  explicit SchemaReader(const KnowsProperty& propertyNames) : knowsProperty(propertyNames) {}

  TicketSchema read(const Node& root) {
    const Scope scope(root);
    if (!isSchemaElement(root, u"ticketSchema"))
      throw DocumentError(root, "a ticket schema begins with the element ticketSchema of the namespace " +
                                    std::string(schemaNameSpace) + ".");
    demandAttributes(root);
    choosePrefixes(root);
    eachChild(root, scope, [this](const Node& child, const Scope& inner) {
      if (child.localNameText() == u"parameter") readParameter(child, inner);
    });
    eachChild(root, scope, [this](const Node& child, const Scope& inner) {
      if (child.localNameText() == u"feature") schema.features.push_back(readFeature(child, inner, true));
    });
    return std::move(schema);
  }

 private:
  static bool isSchemaElement(const Node& node, std::u16string_view name) {
    return node.localNameText() == name && node.nameSpace == Formats::toUtf16(schemaNameSpace);
  }

  // The format of an element; null for an unknown one.
  static const ElementFormat* formatOf(const Node& node) {
    const auto name = Formats::toUtf8(node.localNameText());
    return isSchemaElement(node, node.localNameText()) ? ticketSchemaFormat.find(name) : nullptr;
  }

  template <class Visit>
  static void eachChild(const Node& parent, const Scope& scope, const Visit& visit) {
    for (const auto& child : parent.children()) {
      const ElementFormat* format = formatOf(*child);
      if (format == nullptr || !format->mayBeIn(Formats::toUtf8(parent.localNameText())))
        throw DocumentError(*child, named(*child) + " does not belong into " + named(parent) + ".");
      demandAttributes(*child);
      visit(*child, Scope(*child, scope));
    }
  }

  // Reads an element that has no others.
  static void demandNoChildren(const Node& node, const Scope& scope) {
    eachChild(node, scope, [](const Node&, const Scope&) {});
  }

  static std::string named(const Node& node) { return "the element " + Formats::toUtf8(node.localNameText()); }

  // Rejects attributes that the format does not have; demand does so with missing ones.
  static void demandAttributes(const Node& node) {
    const ElementFormat* format = formatOf(node);
    for (const Node::Attribute& attribute : node.attributes)
      if (!attribute.nameSpace.empty() || format == nullptr || !format->hasAttribute(Formats::toUtf8(attribute.name)))
        throw DocumentError(node, named(node) + " has no attribute " + Formats::toUtf8(attribute.name) + ".");
  }

  static std::optional<std::u16string> optional(const Node& node, std::u16string_view attribute) {
    const std::u16string* value = attributeOf(node, {}, attribute);
    return value == nullptr ? std::nullopt : std::optional(*value);
  }
  static std::u16string demand(const Node& node, std::u16string_view attribute) {
    auto value = optional(node, attribute);
    if (!value) throw DocumentError(node, named(node) + " lacks the attribute " + Formats::toUtf8(attribute) + ".");
    return *std::move(value);
  }

  std::u16string propertyOf(const Node& node) const {
    auto property = demand(node, u"property");
    if (knowsProperty && !knowsProperty(property))
      throw DocumentError(node, "the plug-in knows no property " + Formats::toUtf8(property) + ".");
    return property;
  }

  // The framework's own prefixes, and the schema root's prefixes for other namespaces.
  void choosePrefixes(const Node& root) {
    schema.prefixes = {{u"psf", std::u16string(PrintSchema::framework)},
                       {u"psk", std::u16string(PrintSchema::keywords)},
                       {u"xsi", std::u16string(PrintSchema::instance)},
                       {u"xsd", std::u16string(PrintSchema::dataTypes)}};
    for (const auto& [prefix, nameSpace] : root.declarations) {
      if (prefix.empty() || isDeclared(nameSpace)) continue;
      const bool isTaken = std::any_of(schema.prefixes.begin(), schema.prefixes.end(),
                                       [&p = prefix](const auto& taken) { return taken.first == p; });
      if (isTaken)
        throw DocumentError(root, "the prefix " + Formats::toUtf8(prefix) + " is kept for the Print Schema.");
      schema.prefixes.emplace_back(prefix, nameSpace);
    }
  }
  bool isDeclared(std::u16string_view nameSpace) const {
    return std::any_of(schema.prefixes.begin(), schema.prefixes.end(),
                       [&](const auto& declared) { return declared.second == nameSpace; });
  }

  QName name(const Node& node, std::u16string_view attribute, const Scope& scope) const {
    const auto text = demand(node, attribute);
    auto resolved = scope.resolve(text);
    if (!resolved || !isDeclared(resolved->nameSpace))
      throw DocumentError(node, "the name " + inQuotes(text) + " has no prefix that the root element declares.");
    return *std::move(resolved);
  }

  // Registers a name; throws when another element of the same kind and place has it.
  static void claim(std::set<QName>& taken, const Node& node, const QName& name) {
    if (!taken.insert(name).second)
      throw DocumentError(node, "the name " + Formats::toUtf8(name.name) + " stands twice.");
  }

  static Kiln::PTLevel scopeOf(const Node& node) {
    const auto text = optional(node, u"scope").value_or(u"page");
    if (text == u"page") return Kiln::PTLevel::page;
    if (text == u"document") return Kiln::PTLevel::document;
    if (text == u"job") return Kiln::PTLevel::job;
    throw DocumentError(node, "scope is " + inQuotes(text) + ", not page, document or job.");
  }

  static std::int64_t bound(const Node& node, std::u16string_view attribute) {
    constexpr ValueType bounds{ValueForm::integer, std::numeric_limits<std::int32_t>::min(),
                               std::numeric_limits<std::int32_t>::max()};
    const auto text = demand(node, attribute);
    if (const auto fault = faultOf(bounds, text); !fault.empty())
      throw DocumentError(node, Formats::toUtf8(attribute) + " " + fault);
    return std::stoll(Formats::toUtf8(propertyForm(bounds, text)));
  }

  static ValueType typeOf(const Node& node, ValueForm form) {
    if (form == ValueForm::colour) return {form, 0, 0};
    const ValueType type{form, bound(node, u"least"), bound(node, u"most")};
    if (type.least > type.most) throw DocumentError(node, "least is more than most.");
    if (form == ValueForm::text && type.least < 0) throw DocumentError(node, "a text has at least 0 characters.");
    return type;
  }

  static ValueForm formOf(const Node& node) {
    const auto text = demand(node, u"type");
    if (text == u"text") return ValueForm::text;
    if (text == u"integer") return ValueForm::integer;
    if (text == u"colour") return ValueForm::colour;
    throw DocumentError(node, "type is " + inQuotes(text) + ", not text, integer or colour.");
  }

  static OutOfRange outOfRangeOf(const Node& node) {
    const auto text = optional(node, u"beyond").value_or(u"refused");
    if (text == u"refused") return OutOfRange::refused;
    if (text == u"wrapped") return OutOfRange::wrapped;
    if (text == u"clamped") return OutOfRange::clamped;
    throw DocumentError(node, "beyond is " + inQuotes(text) + ", not refused, wrapped or clamped.");
  }

  ExactParameter readExact(const Node& node, const Scope& scope, ValueForm form, const std::u16string& property) {
    demandNoChildren(node, scope);
    ExactParameter exact{name(node, u"name", scope), typeOf(node, form)};
    claimParameter(node, exact.name, property, exact.type);
    return exact;
  }

  void readParameter(const Node& node, const Scope& scope) {
    const ValueForm form = formOf(node);
    ParameterMapping parameter{name(node, u"name", scope),
                               propertyOf(node),
                               scopeOf(node),
                               typeOf(node, form),
                               outOfRangeOf(node),
                               optional(node, u"unit").value_or(u"characters"),
                               optional(node, u"standIn"),
                               {},
                               optional(node, u"absent")};
    claimParameter(node, parameter.name, parameter.property, parameter.type);
    claimProperty(node, parameter.property);
    eachChild(node, scope, [&](const Node& child, const Scope& inner) {
      if (parameter.exact) throw DocumentError(child, "a parameter has one exact at most.");
      parameter.exact =
          readExact(child, inner, form == ValueForm::integer ? form : ValueForm::text, parameter.property);
    });
    const bool isInexact = parameter.standIn || parameter.outOfRange != OutOfRange::refused;
    if (isInexact && !parameter.exact)
      throw DocumentError(node, "a parameter that changes values needs an exact that carries them.");
    if (parameter.standIn)
      if (const auto fault = faultOf(parameter.type, *parameter.standIn); !fault.empty())
        throw DocumentError(node, "standIn " + fault);
    parameterIndex.emplace(parameter.name, schema.parameters.size());
    schema.parameters.push_back(std::move(parameter));
  }

  OptionMapping readOption(const Node& node, const Scope& scope) const {
    OptionMapping option{name(node, u"name", scope), demand(node, u"value"), {}};
    std::set<QName> scoredNames;
    eachChild(node, scope, [&](const Node& child, const Scope& inner) {
      demandNoChildren(child, inner);
      const QName scored = name(child, u"name", inner);
      const QName parameter = name(child, u"parameter", inner);
      claim(scoredNames, child, scored);
      const auto found = parameterIndex.find(parameter);
      if (found == parameterIndex.end())
        throw DocumentError(child, "there is no parameter " + Formats::toUtf8(parameter.name) + ".");
      option.scored.emplace_back(scored, found->second);
    });
    return option;
  }

  FeatureMapping readFeature(const Node& node, const Scope& scope, bool isOutermost) {
    FeatureMapping feature{
        name(node, u"name", scope), propertyOf(node), scopeOf(node), {}, optional(node, u"absent"), {}, {}, {}};
    if (isOutermost) claim(featureNames, node, feature.name);
    if (optional(node, u"aliasOf"))
      feature.aliasOf = name(node, u"aliasOf", scope);
    else
      claimProperty(node, feature.property);
    std::set<QName> inner;
    eachChild(node, scope, [&](const Node& child, const Scope& childScope) {
      if (child.localNameText() == u"feature") {
        feature.features.push_back(readFeature(child, childScope, false));
        claim(inner, child, feature.features.back().name);
      } else if (child.localNameText() == u"exact") {
        if (isOutermost || feature.exact) throw DocumentError(child, "exact stands once, in a feature of a feature.");
        feature.exact = readExact(child, childScope, ValueForm::text, feature.property);
      } else {
        auto option = readOption(child, childScope);
        if (feature.optionOf(option.name) != nullptr || feature.optionOf(option.value) != nullptr)
          throw DocumentError(child, "the name or the value of the option " + Formats::toUtf8(option.name.name) +
                                         " stands twice.");
        feature.options.push_back(std::move(option));
      }
    });
    if (feature.options.empty()) throw DocumentError(node, "a feature has at least one option.");
    if (feature.absent && feature.optionOf(*feature.absent) != nullptr)
      throw DocumentError(node, "absent is the value of an option.");
    if (feature.absent)
      for (const FeatureMapping& within : feature.features)
        if (!within.exact) throw DocumentError(node, schema.shown(within.name) + " needs an exact.");
    if (feature.aliasOf && !isOutermost) throw DocumentError(node, "aliasOf stands in features of the root alone.");
    if (feature.aliasOf) checkAlias(node, feature);
    return feature;
  }

  // An alias must have the same values as its feature, and no more content than that, so that one of the two is enough.
  void checkAlias(const Node& node, const FeatureMapping& alias) const {
    const auto main = std::find_if(schema.features.begin(), schema.features.end(),
                                   [&alias](const FeatureMapping& feature) { return feature.name == *alias.aliasOf; });
    const auto isPlain = [](const FeatureMapping& feature) {
      return !feature.absent && feature.features.empty() &&
             std::all_of(feature.options.begin(), feature.options.end(),
                         [](const OptionMapping& option) { return option.scored.empty(); });
    };
    if (main == schema.features.end() || main->aliasOf || main->property != alias.property || !isPlain(*main))
      throw DocumentError(node, "aliasOf names no earlier feature of the same property that has options alone.");
    const bool hasAllValues = std::all_of(main->options.begin(), main->options.end(), [&alias](const auto& option) {
      return alias.optionOf(option.value) != nullptr;
    });
    if (!isPlain(alias) || !hasAllValues || alias.options.size() != main->options.size() || alias.scope != main->scope)
      throw DocumentError(node, "an alias has the scope and the values of its feature, and nothing else.");
  }

  void claimParameter(const Node& node, const QName& parameter, const std::u16string& property, const ValueType& type) {
    if (!schema.parameterTypes.emplace(parameter, TicketSchema::Parameter{property, type}).second)
      throw DocumentError(node, "the name " + schema.shown(parameter) + " stands twice.");
  }

  void claimProperty(const Node& node, const std::u16string& property) {
    if (!properties.insert(property).second)
      throw DocumentError(node, "the property " + Formats::toUtf8(property) + " stands twice.");
  }

  const KnowsProperty& knowsProperty;
  TicketSchema schema;
  std::set<QName> featureNames;
  std::set<std::u16string> properties;
  std::map<QName, std::size_t> parameterIndex;
};

}  // namespace

const OptionMapping* FeatureMapping::optionOf(std::u16string_view value) const {
  const auto found = std::find_if(options.begin(), options.end(), [&](const auto& o) { return o.value == value; });
  return found == options.end() ? nullptr : &*found;
}

const OptionMapping* FeatureMapping::optionOf(const QName& optionName) const {
  const auto found = std::find_if(options.begin(), options.end(), [&](const auto& o) { return o.name == optionName; });
  return found == options.end() ? nullptr : &*found;
}

const std::u16string& TicketSchema::prefixOf(std::u16string_view nameSpace) const {
  const auto found =
      std::find_if(prefixes.begin(), prefixes.end(), [&](const auto& p) { return p.second == nameSpace; });
  if (found == prefixes.end()) throw std::logic_error("a namespace that the schema does not declare");
  return found->first;
}

std::u16string TicketSchema::written(const QName& name) const { return prefixOf(name.nameSpace) + u':' + name.name; }

std::string TicketSchema::shown(const QName& name) const {
  const auto found =
      std::find_if(prefixes.begin(), prefixes.end(), [&](const auto& p) { return p.second == name.nameSpace; });
  return Formats::toUtf8((found == prefixes.end() ? u'{' + name.nameSpace + u'}' : found->first + u':') + name.name);
}

constinit const DocumentFormat ticketSchemaFormat{schemaNameSpace, schemaElements};

TicketSchema readSchema(const Node& document, const KnowsProperty& knowsProperty) {
  return SchemaReader(knowsProperty).read(document);
}

}  // namespace Refhost
