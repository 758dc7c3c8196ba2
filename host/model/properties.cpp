#include "host/model/properties.h"

#include "formats/text.h"
#include "host/model/settings.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Refhost {
namespace {

Own<Kiln::XUL::KeyError> unknown(std::u16string_view name) {
  return {heap(), "The model has no property " + Formats::toUtf8(name) + "."};
}

}  // namespace

// One property of the model, as seen by plug-ins.
class ModelProperty final : public Kiln::Property {
 public:
  ModelProperty(PropertyModel& owner, const PropertyDescription& propertyDescription, const Trace& eventTrace)
      : model(owner),
        description(propertyDescription),
        value(propertyDescription.defaultValue),
        enableChange(make<HostSignal<Kiln::ModelEnableChange&>>(eventTrace, "enable-change", description.name)),
        selectionChange(
            make<HostSignal<Kiln::ModelSelectionChange&>>(eventTrace, "selection-change", description.name)) {}

  Kiln::String narrowValue() override { return text(Formats::toUtf8(value)); }
  Kiln::WString wideValue() override { return text(value); }
  bool boolValue() override { return readsAsTrue(value); }
  bool equals(Kiln::WStringView other) override { return value == other.view(); }
  void setValue(Kiln::WStringView newValue) override {
    model.trace.record({"set", {{"property", description.name}, {"value", std::u16string(newValue.view())}}});
    value = newValue.view();
    model.valueWritten();
  }
  bool hasChild(Kiln::WStringView) override { return false; }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView) override { return {}; }

  // Whether an option can be chosen: neither a rule nor setAvailable disables it.
  bool isAvailable(const std::u16string& option) const {
    return !ruledOut.contains(option) && !forbidden.contains(option);
  }
  bool isOption(std::u16string_view option) const {
    return std::find(description.options.begin(), description.options.end(), option) != description.options.end();
  }

  // Whether it prints something else than by default.
  bool isOn() const { return value != description.defaultValue && isAvailable(value); }

  // Moves a value that a rule has disabled to the default or the first available option; false when the value is
  // allowed.
  bool leaveRuledOut() {
    if (!ruledOut.contains(value)) return false;
    const auto standard = description.defaultValue;
    const auto first = std::find_if(description.options.begin(), description.options.end(),
                                    [this](const auto& option) { return isAvailable(option); });
    if (isAvailable(standard)) {
      value = standard;
    } else if (first != description.options.end()) {
      value = *first;
    } else {
      return false;
    }
    return true;
  }

  PropertyModel& model;
  const PropertyDescription& description;
  std::u16string value;
  std::set<std::u16string, std::less<>> ruledOut;
  std::set<std::u16string, std::less<>> forbidden;

  // The previous state, for submit and applyRules.
  std::u16string valueBefore;
  std::set<std::u16string, std::less<>> ruledOutBefore;

  // Counters of the fired signals, to detect superseded ones.
  unsigned long selectionsFired = 0;
  std::map<std::u16string, unsigned long> enablesFired;

  Kiln::SmartPtr<HostSignal<Kiln::ModelEnableChange&>> enableChange;
  Kiln::SmartPtr<HostSignal<Kiln::ModelSelectionChange&>> selectionChange;
};

PropertyModel::PropertyModel(ModelDescription modelDescription, const Trace& eventTrace)
    : model(std::move(modelDescription)),
      trace(eventTrace) {
  for (const PropertyDescription& description : model.properties) {
    properties.push_back(make<ModelProperty>(*this, description, trace));
    byName.emplace(description.name, properties.back().get());
  }
  applyRules();
}

PropertyModel::~PropertyModel() = default;

std::optional<std::u16string> PropertyModel::value(std::u16string_view name) const {
  const ModelProperty* property = find(name);
  return property == nullptr ? std::nullopt : std::optional(property->value);
}

bool PropertyModel::start(std::u16string_view name, std::u16string_view value) {
  ModelProperty* property = find(name);
  if (property == nullptr) return false;
  property->value = value;
  return true;
}

bool PropertyModel::allows(std::u16string_view name, std::u16string_view option) const {
  const ModelProperty* property = find(name);
  if (property == nullptr) return false;
  const std::u16string wanted(option);
  return (property->description.options.empty() || property->isOption(option)) && property->isAvailable(wanted);
}

bool PropertyModel::isContext(std::u16string_view name) const {
  const ModelProperty* property = find(name);
  return property != nullptr && property->description.isContext;
}

void PropertyModel::submit(const TracePairs& pairs) {
  for (const auto& [name, value] : pairs) demand(name);
  for (const auto& property : properties) property->valueBefore = property->value;

  std::vector<ModelProperty*> submitted;
  for (const auto& [name, value] : pairs) {
    ModelProperty& property = demand(name);
    property.value = value;
    if (std::find(submitted.begin(), submitted.end(), &property) == submitted.end()) submitted.push_back(&property);
  }

  Pending pending{applyRules(), {}};
  for (ModelProperty* property : submitted)
    if (property->value != property->valueBefore || !property->selectionChange->isInDelivery())
      pending.selections.push_back({property, property->selectionsFired});
  for (const auto& property : properties) {
    const bool isSubmitted = std::find(submitted.begin(), submitted.end(), property.get()) != submitted.end();
    if (property->value != property->valueBefore && !isSubmitted)
      pending.selections.push_back({property.get(), property->selectionsFired});
  }
  announceAgain(pending);
  fire(pending);
}

void PropertyModel::setAvailable(std::u16string_view name, std::u16string_view option, bool available) {
  ModelProperty& property = demand(name);
  std::u16string value(option);
  const bool before = property.isAvailable(value);
  if (available) {
    property.forbidden.erase(value);
    property.ruledOut.erase(value);
  } else {
    property.forbidden.insert(value);
  }
  if (property.isAvailable(value) == before) return;
  Pending pending{{{&property, value, property.enablesFired[value]}}, {}};
  announceAgain(pending);
  fire(pending);
}

// Adds the selections that plug-ins may no longer show after the pending enable changes.
void PropertyModel::announceAgain(Pending& pending) const {
  const auto add = [&pending](ModelProperty& property) {
    const bool isPending =
        std::any_of(pending.selections.begin(), pending.selections.end(),
                    [&property](const SelectionSignal& signal) { return signal.property == &property; });
    if (!isPending) pending.selections.push_back({&property, property.selectionsFired});
  };
  for (const EnableSignal& signal : pending.enables) {
    ModelProperty& changed = *signal.property;
    if (!changed.isAvailable(signal.option)) continue;
    if (changed.value == signal.option) add(changed);
    if (!changed.isOn()) continue;
    for (const auto& property : properties)
      if (property->description.feature == changed.description.name) add(*property);
  }
}

void PropertyModel::announce() {
  std::exception_ptr first;
  std::string firstCall;
  for (const auto& property : properties) {
    try {
      const auto options = property->description.options;
      for (const std::u16string& option : options)
        if (!property->isAvailable(option)) fireEnable(*property, option);
      fireSelection(*property);
    } catch (...) {
      const std::exception_ptr problem = std::current_exception();
      if (!problem) throw;  // of another compiler, which cannot be kept
      const std::string call = trace.calls().takeFailed();
      if (first) continue;
      first = problem;
      firstCall = call;
    }
  }
  if (!first) return;
  trace.calls().noteFailed(firstCall);
  std::rethrow_exception(first);
}

// Runs the rules until nothing changes; returns the options that became available or unavailable.
std::vector<PropertyModel::EnableSignal> PropertyModel::applyRules() {
  for (const auto& property : properties) property->ruledOutBefore = property->ruledOut;
  // Each round but the last moves a property away from an option; the limit ends cyclic rules.
  for (std::size_t round = 0; round <= model.rules.size(); ++round) {
    for (const auto& property : properties) property->ruledOut.clear();
    for (const RuleDescription& rule : model.rules)
      if (holds(rule, [this](std::u16string_view name) { return std::u16string_view(demand(name).value); }))
        demand(rule.property).ruledOut.insert(rule.option);
    bool moved = false;
    for (const auto& property : properties) moved = property->leaveRuledOut() || moved;
    if (!moved) break;
  }
  std::vector<EnableSignal> changed;
  for (const auto& property : properties)
    for (const std::u16string& option : property->description.options) {
      const bool before = property->ruledOutBefore.contains(option);
      if (before != property->ruledOut.contains(option) && !property->forbidden.contains(option))
        changed.push_back({property.get(), option, property->enablesFired[option]});
    }
  return changed;
}

void PropertyModel::fire(const Pending& pending) {
  ++depth;
  try {
    for (const EnableSignal& signal : pending.enables)
      if (signal.property->enablesFired[signal.option] == signal.firedBefore)
        fireEnable(*signal.property, signal.option);
    for (const SelectionSignal& signal : pending.selections)
      if (signal.property->selectionsFired == signal.firedBefore) fireSelection(*signal.property);
  } catch (...) {
    --depth;
    notify();
    throw;
  }
  --depth;
  notify();
}

void PropertyModel::fireEnable(ModelProperty& property, const std::u16string& option) {
  ++property.enablesFired[option];
  const bool enabled = property.isAvailable(option);
  const std::u16string& name = property.description.name;
  trace.record({"signal", {{"signal", u"enable-change"}, {"of", name}, {"option", option}, {"enabled", enabled}}});
  Kiln::ModelEnableChange change{text(name), text(option), enabled};
  property.enableChange->fire(change);
}

void PropertyModel::fireSelection(ModelProperty& property) {
  ++property.selectionsFired;
  const std::u16string& name = property.description.name;
  trace.record({"signal", {{"signal", u"selection-change"}, {"of", name}, {"value", property.value}}});
  Kiln::ModelSelectionChange change{Kiln::SmartPtr<Kiln::Property>(&property), text(property.value)};
  property.selectionChange->fire(change);
}

void PropertyModel::valueWritten() { notify(); }

void PropertyModel::notify() {
  if (depth > 0) return;
  for (const auto& listener : listeners) listener();
}

TracePairs PropertyModel::values() const {
  TracePairs pairs;
  for (const auto& property : properties) pairs.emplace_back(property->description.name, property->value);
  return pairs;
}

TracePairs PropertyModel::printedValues() const {
  TracePairs pairs = values();
  for (std::size_t i = 0; i < pairs.size(); ++i)
    if (!properties[i]->isAvailable(pairs[i].second)) pairs[i].second = properties[i]->description.defaultValue;
  return pairs;
}

void PropertyModel::setValue(Kiln::WStringView) { throw failure("The root of the model has no value."); }

bool PropertyModel::hasChild(Kiln::WStringView name) { return find(name) != nullptr; }

Kiln::SmartPtr<Kiln::Property> PropertyModel::child(Kiln::WStringView name) {
  return Kiln::SmartPtr<Kiln::Property>(find(name));
}

Kiln::SmartPtr<Kiln::Signal<Kiln::ModelEnableChange&>> PropertyModel::enableChangeSignal(Kiln::WStringView name) {
  return demand(name).enableChange;
}

Kiln::SmartPtr<Kiln::Signal<Kiln::ModelSelectionChange&>> PropertyModel::selectionChangeSignal(Kiln::WStringView name) {
  return demand(name).selectionChange;
}

ModelProperty* PropertyModel::find(std::u16string_view name) const {
  const auto found = byName.find(name);
  return found == byName.end() ? nullptr : found->second;
}

ModelProperty& PropertyModel::demand(std::u16string_view name) const {
  ModelProperty* property = find(name);
  if (property == nullptr) throw unknown(name);
  return *property;
}

}  // namespace Refhost
