#include "host/ticket/capabilities.h"

#include "formats/text.h"
#include "host/ticket/conversion.h"
#include "host/ticket/elements.h"

#include <algorithm>

namespace Refhost {
namespace {

QName keyword(std::u16string_view name) { return {std::u16string(name), std::u16string(PrintSchema::keywords)}; }
QName frameworkName(std::u16string_view name) { return {std::u16string(name), std::u16string(PrintSchema::framework)}; }

class CapabilitiesWriter {
 public:
  CapabilitiesWriter(const TicketSchema& ticketSchema, const PropertyModel& propertyModel)
      : schema(ticketSchema),
        model(propertyModel),
        make(ticketSchema) {}

  Kiln::SmartPtr<Node> write() const {
    auto root = Refhost::make<Node>(u"PrintCapabilities");
    make.makeRoot(*root);
    for (const FeatureMapping& feature : schema.features) addFeature(feature, *root);
    for (const ParameterMapping& parameter : schema.parameters) addParameter(parameter, *root);
    addExactOf(schema.features, *root);
    return root;
  }

 private:
  const PropertyDescription* descriptionOf(const std::u16string& property) const {
    const auto& properties = model.description().properties;
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const auto& described) { return described.name == property; });
    return found == properties.end() ? nullptr : &*found;
  }

  void addFeature(const FeatureMapping& feature, Node& parent) const {
    const PropertyDescription* property = descriptionOf(feature.property);
    if (property == nullptr) return;
    auto node = make.element(u"Feature", feature.name);
    node->append(propertyNode(u"SelectionType", u"QName", schema.written(keyword(u"PickOne"))));
    bool hasOptions = false;
    for (const OptionMapping& option : feature.options) {
      if (!isListed(*property, option.value)) continue;
      node->append(optionNode(*property, option));
      hasOptions = true;
    }
    if (!hasOptions) return;
    for (const FeatureMapping& within : feature.features) addFeature(within, *node);
    parent.append(std::move(node));
  }

  static bool isListed(const PropertyDescription& property, const std::u16string& value) {
    const auto& options = property.options;
    return options.empty() || std::find(options.begin(), options.end(), value) != options.end();
  }

  Kiln::SmartPtr<Node> optionNode(const PropertyDescription& property, const OptionMapping& option) const {
    auto node = make.element(u"Option", option.name);
    setAttribute(*node, {}, {}, u"constrained", schema.written(keyword(constraintOn(property, option.value))));
    for (const auto& [name, index] : option.scored) {
      const ParameterMapping& parameter = schema.parameters[index];
      if (descriptionOf(parameter.property) == nullptr) continue;
      auto scored = make.element(u"ScoredProperty", name);
      scored->append(make.element(u"ParameterRef", parameter.name));
      node->append(std::move(scored));
    }
    return node;
  }

  // Rules that depend only on context properties are device constraints; users can resolve all others.
  std::u16string_view constraintOn(const PropertyDescription& property, const std::u16string& value) const {
    if (model.allows(property.name, value)) return u"None";
    const auto& rules = model.description().rules;
    const bool isOfDevice = std::any_of(rules.begin(), rules.end(), [&](const RuleDescription& rule) {
      return rule.property == property.name && rule.option == value && rulesByFactsAlone(rule);
    });
    return isOfDevice ? u"DeviceSettings" : u"PrintTicketSettings";
  }
  bool rulesByFactsAlone(const RuleDescription& rule) const {
    return std::all_of(rule.conditions.begin(), rule.conditions.end(), [&](const auto& condition) {
      return model.isContext(condition.property) && model.value(condition.property) == condition.value;
    });
  }

  void addParameter(const ParameterMapping& parameter, Node& root) const {
    const PropertyDescription* property = descriptionOf(parameter.property);
    if (property == nullptr) return;
    const auto& standard = property->defaultValue;
    root.append(definition(parameter.name, parameter.type, parameter.unit, publicValue(parameter, standard)));
    if (parameter.exact)
      root.append(definition(parameter.exact->name, parameter.exact->type, parameter.unit, standard));
  }

  void addExactOf(const std::vector<FeatureMapping>& features, Node& root) const {
    for (const FeatureMapping& feature : features) {
      const PropertyDescription* property = descriptionOf(feature.property);
      if (property != nullptr && feature.exact)
        root.append(definition(feature.exact->name, feature.exact->type, u"characters", property->defaultValue));
      addExactOf(feature.features, root);
    }
  }

  Kiln::SmartPtr<Node> definition(const QName& name, const ValueType& type, std::u16string_view unit,
                                  const std::optional<std::u16string>& standard) const {
    const bool isInteger = type.form == ValueForm::integer;
    const ValueType length = type.form == ValueForm::colour ? ValueType{type.form, 9, 9} : type;
    auto node = make.element(u"ParameterDef", name);
    const auto add = [&](std::u16string_view propertyName, std::u16string_view dataType, std::u16string_view text) {
      node->append(propertyNode(propertyName, dataType, text));
    };
    const QName dataType{std::u16string(dataTypeOf(type)), std::u16string(PrintSchema::dataTypes)};
    add(u"DataType", u"QName", schema.written(dataType));
    if (standard) add(u"DefaultValue", dataTypeOf(type), *standard);
    add(isInteger ? u"MinValue" : u"MinLength", u"integer", Formats::toUtf16(std::to_string(length.least)));
    add(isInteger ? u"MaxValue" : u"MaxLength", u"integer", Formats::toUtf16(std::to_string(length.most)));
    add(u"Multiple", u"integer", u"1");
    add(u"Mandatory", u"QName", schema.written(keyword(u"Conditional")));
    add(u"UnitType", u"string", unit);
    return node;
  }

  Kiln::SmartPtr<Node> propertyNode(std::u16string_view name, std::u16string_view dataType,
                                    std::u16string_view text) const {
    auto node = make.element(u"Property", frameworkName(name));
    node->append(make.value(dataType, text));
    return node;
  }

  const TicketSchema& schema;
  const PropertyModel& model;
  const Elements make;
};

}  // namespace

Kiln::SmartPtr<Node> capabilitiesOf(const TicketSchema& schema, const PropertyModel& model) {
  return CapabilitiesWriter(schema, model).write();
}

}  // namespace Refhost
