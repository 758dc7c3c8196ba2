#include "host/ticket/foreign_content.h"

#include <algorithm>
#include <set>

namespace Refhost {

// Separates a ticket's elements into known and foreign ones.
class ForeignContent::Reader {
 public:
  Reader(const TicketSchema& ticketSchema, Kiln::Property& tree) : schema(ticketSchema), properties(tree) {}

  Content readRoot(const Node& root, std::vector<Feature>& features) const {
    const Scope scope(root);
    return divide(root, scope, [&](const Node& child) {
      return isKnownInit(child, scope) || readFeature(schema.features, child, scope, features);
    });
  }

 private:
  // Keeps the children for which `isKnown` is false.
  template <class IsKnown>
  Content divide(const Node& element, const Scope& scope, const IsKnown& isKnown) const {
    Content content;
    for (const auto& declared : element.declarations)
      if (!isOwnPrefix(declared.first)) content.declarations.push_back(declared);
    for (const auto& child : element.children())
      if (!isKnown(*child) && !isMeaningless(*child, scope)) content.nodes.push_back(kept(*child, scope));
    return content;
  }

  bool isOwnPrefix(const std::u16string& prefix) const {
    return std::any_of(schema.prefixes.begin(), schema.prefixes.end(),
                       [&](const auto& own) { return own.first == prefix; });
  }

  // Whether the node's name has a prefix that is undeclared at its place. In a document of this system the same name
  // would have a meaning, perhaps one that the document has already.
  bool isMeaningless(const Node& node, const Scope& around) const {
    const std::u16string* name = attributeOf(node, {}, u"name");
    if (name == nullptr || name->find(u':') == name->npos) return false;
    const std::u16string prefix = name->substr(0, name->find(u':'));
    return isOwnPrefix(prefix) && Scope(node, around).nameSpaceOf(prefix) == nullptr;
  }

  // A copy with declarations of the prefixes that are in scope at its place, as far as this system's documents use them
  // differently.
  Kiln::SmartPtr<Node> kept(const Node& node, const Scope& around) const {
    auto copy = node.copy();
    for (const auto& [prefix, nameSpace] : schema.prefixes)
      if (const auto* meant = around.nameSpaceOf(prefix); meant != nullptr && *meant != nameSpace)
        if (!declares(*copy, prefix)) copy->declarations.emplace_back(prefix, *meant);
    return copy;
  }

  static bool declares(const Node& element, const std::u16string& prefix) {
    return std::any_of(element.declarations.begin(), element.declarations.end(),
                       [&](const auto& declared) { return declared.first == prefix; });
  }

  bool isKnownInit(const Node& node, const Scope& around) const {
    if (!isFrameworkElement(node, u"ParameterInit")) return false;
    const auto name = Scope(node, around).resolveAttribute(node, u"name");
    const auto known = name ? schema.parameterTypes.find(*name) : schema.parameterTypes.end();
    return known != schema.parameterTypes.end() && properties.hasChild(known->second.property);
  }

  // False when the node is not one of the mapped features; otherwise adds its foreign content to `features`.
  bool readFeature(const std::vector<FeatureMapping>& mapped, const Node& node, const Scope& around,
                   std::vector<Feature>& features) const {
    if (!isFrameworkElement(node, u"Feature")) return false;
    const Scope scope(node, around);
    const auto name = scope.resolveAttribute(node, u"name");
    const auto mapping =
        std::find_if(mapped.begin(), mapped.end(), [&](const FeatureMapping& feature) { return feature.name == name; });
    if (mapping == mapped.end() || !properties.hasChild(mapping->property)) return false;
    Feature feature{*name, {}, {}, {}, {}};
    feature.content = divide(node, scope, [&](const Node& child) {
      if (!isFrameworkElement(child, u"Option")) return readFeature(mapping->features, child, scope, feature.features);
      readOption(*mapping, child, scope, feature);
      return true;
    });
    features.push_back(std::move(feature));
    return true;
  }

  void readOption(const FeatureMapping& mapping, const Node& node, const Scope& around, Feature& feature) const {
    const Scope scope(node, around);
    feature.option = scope.resolveAttribute(node, u"name");
    const OptionMapping* option = feature.option ? mapping.optionOf(*feature.option) : nullptr;
    feature.ofOption = divide(node, scope, [&](const Node& child) {
      if (option == nullptr || !isFrameworkElement(child, u"ScoredProperty")) return false;
      const auto name = Scope(child, scope).resolveAttribute(child, u"name");
      return std::any_of(option->scored.begin(), option->scored.end(), [&](const auto& scored) {
        return scored.first == name && properties.hasChild(schema.parameters[scored.second].property);
      });
    });
  }

  const TicketSchema& schema;
  Kiln::Property& properties;
};

ForeignContent::ForeignContent(const TicketSchema& schema, Kiln::Property& properties, const Node& root) {
  ofRoot = Reader(schema, properties).readRoot(root, ofFeatures);
}

void ForeignContent::addTo(const TicketSchema& schema, Node& root) const {
  add(ofRoot, root);
  add(schema, ofFeatures, root);
}

void ForeignContent::add(const Content& content, Node& element) {
  std::set<std::u16string> declared;
  for (const auto& [prefix, nameSpace] : element.declarations) declared.insert(prefix);
  for (const auto& [prefix, nameSpace] : content.declarations)
    if (declared.insert(prefix).second) element.declarations.emplace_back(prefix, nameSpace);
  for (const auto& node : content.nodes) element.append(node->copy());
}

void ForeignContent::add(const TicketSchema& schema, const std::vector<Feature>& features, Node& parent) {
  const auto isNamed = [&](const Node& node, std::u16string_view type, const QName& name) {
    const std::u16string* written = attributeOf(node, {}, u"name");
    return isFrameworkElement(node, type) && written != nullptr && *written == schema.written(name);
  };
  for (const Feature& feature : features)
    for (const auto& node : parent.children()) {
      if (!isNamed(*node, u"Feature", feature.name)) continue;
      for (const auto& child : node->children())
        if (feature.option && isNamed(*child, u"Option", *feature.option)) add(feature.ofOption, *child);
      add(schema, feature.features, *node);
      add(feature.content, *node);
      break;
    }
}

}  // namespace Refhost
