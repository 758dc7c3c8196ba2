#include "formats/sentences.h"
#include "formats/text.h"
#include "host/ticket/conversion.h"
#include "host/ticket/elements.h"

#include <map>
#include <set>

namespace Refhost {
namespace {

class TicketReader {
 public:
  TicketReader(const TicketSchema& ticketSchema, Kiln::Property& tree) : schema(ticketSchema), properties(tree) {}

  std::vector<std::pair<std::u16string, std::u16string>> read(const Node& root) {
    checkRoot(root);
    refuseMixedText(root);
    const Scope scope(root);
    for (const auto& child : root.children())
      if (isFrameworkElement(*child, u"ParameterInit")) readInit(*child, scope);
    readFeatures(schema.features, &root, scope);
    for (std::size_t i = 0; i < schema.parameters.size(); ++i) readParameter(i);
    return std::move(settings);
  }

 private:
  // A text in the ticket, and its element.
  struct Found {
    std::u16string text;
    const Node* node;
  };

  static void checkRoot(const Node& root) {
    if (!isFrameworkElement(root, u"PrintTicket"))
      throw DocumentError(root,
                          Formats::sentence("the root element is {1}, not PrintTicket of the Print Schema framework.",
                                            Formats::toUtf8(root.localNameText())));
    const std::u16string* version = attributeOf(root, {}, u"version");
    if (version == nullptr || *version != u"1")
      throw DocumentError(root, Formats::sentence("the root element PrintTicket does not have the version \"1\"."));
  }

  // Only elements without children may have text; the position of other text would be lost in the next ticket.
  static void refuseMixedText(const Node& node) {
    if (!node.children().empty() && !node.text().empty())
      throw DocumentError(
          node, Formats::sentence("there is text beside the elements in {1}.", Formats::toUtf8(node.localNameText())));
    for (const auto& child : node.children()) refuseMixedText(*child);
  }

  void readInit(const Node& node, const Scope& around) {
    const Scope scope(node, around);
    const auto name = scope.resolveAttribute(node, u"name");
    if (!name) return;
    const auto known = schema.parameterTypes.find(*name);
    if (known == schema.parameterTypes.end() || !properties.hasChild(known->second.property)) return;
    if (node.children().size() != 1)
      throw DocumentError(node, Formats::sentence("{1} does not have one Value.", schema.shown(*name)));
    const Node& value = *node.children().front();
    const bool isNew = inits.emplace(*name, Found{textOf(value, scope, known->second.type, *name), &value}).second;
    if (!isNew) throw DocumentError(node, Formats::sentence("{1} stands twice.", schema.shown(*name)));
  }

  // The text of a Value with that type.
  std::u16string textOf(const Node& value, const Scope& around, const ValueType& type, const QName& name) const {
    if (!isFrameworkElement(value, u"Value") || !value.children().empty())
      throw DocumentError(value, Formats::sentence("{1} does not have one Value.", schema.shown(name)));
    const std::u16string* typeName = attributeOf(value, PrintSchema::instance, u"type");
    const auto given = typeName == nullptr ? std::nullopt : Scope(value, around).resolve(*typeName);
    const QName wanted{std::u16string(dataTypeOf(type)), std::u16string(PrintSchema::dataTypes)};
    if (given != wanted)
      throw DocumentError(value,
                          Formats::sentence("{1} is not of the type {2}.", schema.shown(name), schema.shown(wanted)));
    if (const auto fault = faultOf(type, value.text()); !fault.empty())
      throw DocumentError(value, Formats::sentence("{1} {2}", schema.shown(name), fault));
    return value.text();
  }

  // The features below `parent`, or, when null, those below an omitted feature.
  void readFeatures(const std::vector<FeatureMapping>& features, const Node* parent, const Scope& scope) {
    std::set<QName> given;
    if (parent != nullptr)
      for (const auto& child : parent->children())
        if (const FeatureMapping* feature = featureAt(features, *child, scope))
          if (!given.insert(feature->name).second)
            throw DocumentError(*child, Formats::sentence("{1} stands twice.", schema.shown(feature->name)));
    if (parent != nullptr)
      for (const auto& child : parent->children())
        if (const FeatureMapping* feature = featureAt(features, *child, scope))
          readFeature(*feature, *child, Scope(*child, scope), feature->aliasOf && given.contains(*feature->aliasOf));
    for (const FeatureMapping& feature : features)
      if (feature.aliasOf && given.contains(feature.name)) given.insert(*feature.aliasOf);
    for (const FeatureMapping& feature : features)
      if (!given.contains(feature.name) && properties.hasChild(feature.property)) readLeftOut(feature, scope);
  }

  // The mapped feature that the node is; null for none.
  const FeatureMapping* featureAt(const std::vector<FeatureMapping>& features, const Node& node,
                                  const Scope& around) const {
    if (!isFrameworkElement(node, u"Feature")) return nullptr;
    return featureOf(features, Scope(node, around).resolveAttribute(node, u"name"));
  }

  const FeatureMapping* featureOf(const std::vector<FeatureMapping>& features, const std::optional<QName>& name) const {
    for (const FeatureMapping& feature : features)
      if (feature.name == name) return properties.hasChild(feature.property) ? &feature : nullptr;
    return nullptr;
  }

  // An overruled feature is an alias whose feature is in the ticket too: it is checked alone.
  void readFeature(const FeatureMapping& feature, const Node& node, const Scope& scope, bool isOverruled) {
    const Node* chosen = nullptr;
    for (const auto& child : node.children()) {
      if (!isFrameworkElement(*child, u"Option")) continue;
      if (chosen != nullptr)
        throw DocumentError(*child, Formats::sentence("{1} has more than one Option.", schema.shown(feature.name)));
      chosen = child.get();
    }
    if (chosen == nullptr)
      throw DocumentError(node, Formats::sentence("{1} has no Option.", schema.shown(feature.name)));
    const Scope inner(*chosen, scope);
    const auto name = inner.resolveAttribute(*chosen, u"name");
    const OptionMapping* option = name ? feature.optionOf(*name) : nullptr;
    if (option == nullptr)
      throw DocumentError(*chosen,
                          Formats::sentence("{1} has no option {2}.", schema.shown(feature.name),
                                            (name ? schema.shown(*name) : Formats::sentence("without a name"))));
    if (isOverruled) return;
    settings.emplace_back(feature.property, option->value);
    readScored(*option, *chosen, inner);
    readFeatures(feature.features, &node, scope);
  }

  void readLeftOut(const FeatureMapping& feature, const Scope& scope) {
    if (feature.exact)
      if (const auto found = inits.find(feature.exact->name); found != inits.end()) {
        if (found->second.text != feature.absent && feature.optionOf(found->second.text) == nullptr)
          throw DocumentError(*found->second.node,
                              Formats::sentence("{1} is {2}, which is no value of {3}.",
                                                schema.shown(feature.exact->name), inQuotes(found->second.text),
                                                schema.shown(feature.name)));
        settings.emplace_back(feature.property, found->second.text);
        readFeatures(feature.features, nullptr, scope);
        return;
      }
    if (feature.absent) settings.emplace_back(feature.property, *feature.absent);
    readFeatures(feature.features, nullptr, scope);
  }

  void readScored(const OptionMapping& option, const Node& node, const Scope& scope) {
    for (const auto& child : node.children()) {
      if (!isFrameworkElement(*child, u"ScoredProperty")) continue;
      const Scope inner(*child, scope);
      const auto name = inner.resolveAttribute(*child, u"name");
      for (const auto& [scoredName, index] : option.scored)
        if (scoredName == name && properties.hasChild(schema.parameters[index].property))
          readScored(scoredName, index, *child, inner);
    }
  }

  // A scored property holds its value, or refers to a parameter.
  void readScored(const QName& name, std::size_t index, const Node& node, const Scope& scope) {
    const ParameterMapping& parameter = schema.parameters[index];
    if (node.children().size() != 1)
      throw DocumentError(node, Formats::sentence("{1} does not have one Value or ParameterRef.", schema.shown(name)));
    const Node& content = *node.children().front();
    if (!isFrameworkElement(content, u"ParameterRef")) {
      const bool isNew = literals.emplace(index, Found{textOf(content, scope, parameter.type, name), &content}).second;
      if (!isNew) throw DocumentError(node, Formats::sentence("{1} stands twice.", schema.shown(name)));
      return;
    }
    const auto target = Scope(content, scope).resolveAttribute(content, u"name");
    if (target != parameter.name)
      throw DocumentError(
          content, Formats::sentence("{1} does not refer to {2}.", schema.shown(name), schema.shown(parameter.name)));
    if (!inits.contains(parameter.name))
      throw DocumentError(
          content, Formats::sentence("{1} is referred to, but has no ParameterInit.", schema.shown(parameter.name)));
  }

  void readParameter(std::size_t index) {
    const ParameterMapping& parameter = schema.parameters[index];
    if (!properties.hasChild(parameter.property)) return;
    const std::u16string* open = publicText(parameter, index);
    const auto exact = parameter.exact ? inits.find(parameter.exact->name) : inits.end();
    if (exact != inits.end() && (open == nullptr || standsFor(parameter, *open, exact->second.text)))
      settings.emplace_back(parameter.property, propertyForm(parameter.exact->type, exact->second.text));
    else if (open != nullptr)
      settings.emplace_back(parameter.property, propertyForm(parameter.type, *open));
    else if (parameter.absent)
      settings.emplace_back(parameter.property, *parameter.absent);
  }

  // Whether the public text is unchanged since it was written for the exact value.
  static bool standsFor(const ParameterMapping& parameter, const std::u16string& open, const std::u16string& exact) {
    const auto written = publicValue(parameter, propertyForm(parameter.exact->type, exact));
    return written && propertyForm(parameter.type, *written) == propertyForm(parameter.type, open);
  }

  const std::u16string* publicText(const ParameterMapping& parameter, std::size_t index) const {
    if (const auto literal = literals.find(index); literal != literals.end()) return &literal->second.text;
    const auto init = inits.find(parameter.name);
    return init == inits.end() ? nullptr : &init->second.text;
  }

  const TicketSchema& schema;
  Kiln::Property& properties;
  std::map<QName, Found> inits;
  std::map<std::size_t, Found> literals;  // by parameter: values in scored properties
  std::vector<std::pair<std::u16string, std::u16string>> settings;
};

}  // namespace

std::vector<std::pair<std::u16string, std::u16string>> readTicket(const TicketSchema& schema,
                                                                  Kiln::Property& properties, const Node& root) {
  return TicketReader(schema, properties).read(root);
}

}  // namespace Refhost
