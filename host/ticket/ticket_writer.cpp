#include "formats/sentences.h"
#include "formats/text.h"
#include "host/ticket/conversion.h"
#include "host/ticket/elements.h"

namespace Refhost {
namespace {

class TicketWriter {
 public:
  TicketWriter(const TicketSchema& ticketSchema, Kiln::Property& tree, Kiln::PTLevel ticketLevel)
      : schema(ticketSchema),
        properties(tree),
        level(ticketLevel),
        make(ticketSchema),
        isReferred(ticketSchema.parameters.size()) {}

  // The children of the ticket's root.
  std::vector<Kiln::SmartPtr<Node>> write() {
    for (const FeatureMapping& feature : schema.features)
      if (auto node = featureNode(feature)) nodes.push_back(std::move(node));
    for (std::size_t i = 0; i < schema.parameters.size(); ++i) writeParameter(schema.parameters[i], isReferred[i]);
    nodes.insert(nodes.end(), exactOfFeatures.begin(), exactOfFeatures.end());
    return std::move(nodes);
  }

 private:
  bool isWritten(const std::u16string& property, Kiln::PTLevel scope) const {
    return scope <= level && properties.hasChild(property);
  }
  std::u16string valueOf(const std::u16string& property) const { return properties.child(property)->wideValue().str(); }

  [[noreturn]] static void refuse(const std::u16string& property, const std::string& what) {
    throw std::runtime_error(
        Formats::sentence("No PrintTicket can be made: the property {1} {2}", Formats::toUtf8(property), what));
  }

  // Empty for an omitted feature.
  Kiln::SmartPtr<Node> featureNode(const FeatureMapping& feature) {
    if (!isWritten(feature.property, feature.scope)) return {};
    const OptionMapping* option = chosenOption(feature);
    if (option == nullptr) {
      for (const FeatureMapping& within : feature.features) writeLeftOut(within);
      return {};
    }
    auto node = make.element(u"Feature", feature.name);
    node->append(optionNode(*option));
    for (const FeatureMapping& within : feature.features)
      if (auto inner = featureNode(within)) node->append(std::move(inner));
    return node;
  }

  // Null for the value that omits the feature.
  const OptionMapping* chosenOption(const FeatureMapping& feature) const {
    const auto value = valueOf(feature.property);
    const OptionMapping* option = feature.optionOf(value);
    if (option == nullptr && value != feature.absent)
      refuse(feature.property,
             Formats::sentence("is {1}, for which {2} has no option.", inQuotes(value), schema.shown(feature.name)));
    return option;
  }

  Kiln::SmartPtr<Node> optionNode(const OptionMapping& option) {
    auto node = make.element(u"Option", option.name);
    for (const auto& [name, index] : option.scored) {
      const ParameterMapping& parameter = schema.parameters[index];
      if (!isWritten(parameter.property, parameter.scope)) continue;
      auto scored = make.element(u"ScoredProperty", name);
      scored->append(make.element(u"ParameterRef", parameter.name));
      node->append(std::move(scored));
      isReferred[index] = true;
    }
    return node;
  }

  void writeLeftOut(const FeatureMapping& feature) {
    if (!isWritten(feature.property, feature.scope)) return;
    chosenOption(feature);
    exactOfFeatures.push_back(initNode(feature.exact->name, feature.exact->type, valueOf(feature.property)));
    for (const FeatureMapping& within : feature.features) writeLeftOut(within);
  }

  void writeParameter(const ParameterMapping& parameter, bool isReferredTo) {
    if (!isWritten(parameter.property, parameter.scope)) return;
    const auto value = valueOf(parameter.property);
    const auto written = publicValue(parameter, value);
    const bool isWhole = written && propertyForm(parameter.type, *written) == value;
    if (!parameter.exact) {
      if (!isWhole) refuseValue(parameter.property, parameter.type, value);
      nodes.push_back(initNode(parameter.name, parameter.type, *written));
      return;
    }
    // Validated even when not written, so that a value's validity does not depend on other settings.
    const ValueType& exactType = parameter.exact->type;
    if (!faultOf(exactType, value).empty() || propertyForm(exactType, value) != value || !written)
      refuseValue(parameter.property, exactType, value);
    if (isReferredTo) nodes.push_back(initNode(parameter.name, parameter.type, *written));
    if (!isReferredTo || !isWhole) nodes.push_back(initNode(parameter.exact->name, exactType, value));
  }

  [[noreturn]] static void refuseValue(const std::u16string& property, const ValueType& type,
                                       std::u16string_view value) {
    const auto fault = faultOf(type, value);
    refuse(property,
           fault.empty() ? Formats::sentence("is {1}, which the ticket would change.", inQuotes(value)) : fault);
  }

  Kiln::SmartPtr<Node> initNode(const QName& name, const ValueType& type, std::u16string_view text) const {
    auto init = make.element(u"ParameterInit", name);
    init->append(make.value(type, text));
    return init;
  }

  const TicketSchema& schema;
  Kiln::Property& properties;
  const Kiln::PTLevel level;
  const Elements make;
  std::vector<bool> isReferred;  // by parameter: whether a written option refers to it
  std::vector<Kiln::SmartPtr<Node>> nodes;
  std::vector<Kiln::SmartPtr<Node>> exactOfFeatures;
};

}  // namespace

std::optional<std::u16string> publicValue(const ParameterMapping& parameter, std::u16string_view value) {
  if (auto written = ticketForm(parameter.type, parameter.outOfRange, value)) return written;
  return parameter.standIn;
}

void writeTicket(const TicketSchema& schema, Kiln::Property& properties, Kiln::PTLevel level, Node& root) {
  const auto nodes = TicketWriter(schema, properties, level).write();
  Elements(schema).makeRoot(root);
  for (const auto& node : nodes) root.append(node);
}

}  // namespace Refhost
