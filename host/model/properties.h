// The property model: values, option availability, rules, and the signals that tell of their changes.
//
// A transition is applied, the rules run until nothing changes, then the signals fire, all before submit returns:
//
//   - A rule that makes a chosen option unavailable moves its property to the default, or, where that is unavailable
//   too,
//     to the first available option. An option that the host forbids by hand stays chosen, and is not printed.
//   - First each option whose availability changed, in the model's order; then the selection changes: the submitted
//     properties in the order of their first pair, then the others that changed, in the model's order.
//   - A submitted pair fires even when its value is the one that the property had, except while that property's own
//     selection change is being delivered: then only a new value fires.
//   - A signal that a nested transition has overtaken, by a newer one for the same property or option, is dropped.
#pragma once

#include "host/model/description.h"
#include "host/object.h"
#include "host/signal.h"
#include "kiln/property.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

class ModelProperty;

class PropertyModel final : public Kiln::ModelRoot {
 public:
  PropertyModel(ModelDescription modelDescription, const Trace& eventTrace);
  ~PropertyModel() override;

  const ModelDescription& description() const { return model; }

  // The value; empty optional for a name that the model does not have.
  std::optional<std::u16string> value(std::u16string_view name) const;

  // Sets what the property has when the run opens; no signals, and the rules wait for `started`. False for an unknown
  // name.
  bool start(std::u16string_view name, std::u16string_view value);
  void started() { applyRules(); }

  // Whether the option can be chosen now. True for any value of a property whose text is free; false for an unknown
  // property or option.
  bool allows(std::u16string_view name, std::u16string_view option) const;

  // Applies pairs as above. Throws Kiln::XUL::KeyError, and changes nothing, when a name is unknown.
  void submit(const TracePairs& pairs);

  // Makes an option available or unavailable by hand, whatever the rules say until they run again. Throws KeyError for
  // a property that the model does not have.
  void setAvailable(std::u16string_view name, std::u16string_view option, bool available);

  // Fires the state as it is: property by property in the model's order, an enable change for each unavailable option,
  // then a selection change.
  void announce();

  // Called after the outermost submit or setAvailable has fired its signals, and after a value was written straight.
  void onChange(std::function<void()> listener) { listeners.push_back(std::move(listener)); }

  // Every property's value in the model's order.
  TracePairs values() const;

  // The values that print: as values(), with each option that cannot be chosen now replaced by the default.
  TracePairs printedValues() const;

  // Kiln::ModelRoot
  Kiln::String narrowValue() override { return {}; }
  Kiln::WString wideValue() override { return {}; }
  bool boolValue() override { return false; }
  bool equals(Kiln::WStringView text) override { return text.size() == 0; }
  void setValue(Kiln::WStringView text) override;
  bool hasChild(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelEnableChange&>> enableChangeSignal(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelSelectionChange&>> selectionChangeSignal(Kiln::WStringView name) override;

  // Whether the model has a property of that name, and whether it is one that a user may set.
  bool isKnown(std::u16string_view name) const { return find(name) != nullptr; }
  bool isContext(std::u16string_view name) const;

 private:
  friend class ModelProperty;

  // A signal that a change calls for, and how many of its kind had been fired when it did.
  struct EnableSignal {
    ModelProperty* property;
    std::u16string option;
    unsigned long firedBefore;
  };
  struct SelectionSignal {
    ModelProperty* property;
    unsigned long firedBefore;
  };
  struct Pending {
    std::vector<EnableSignal> enables;
    std::vector<SelectionSignal> selections;
  };

  ModelProperty* find(std::u16string_view name) const;
  ModelProperty& demand(std::u16string_view name) const;
  std::vector<EnableSignal> applyRules();
  void fire(const Pending& pending);
  void fireEnable(ModelProperty& property, const std::u16string& option);
  void fireSelection(ModelProperty& property);
  void valueWritten();
  void notify();

  ModelDescription model;
  const Trace& trace;
  std::vector<Kiln::SmartPtr<ModelProperty>> properties;
  std::map<std::u16string, ModelProperty*, std::less<>> byName;
  std::vector<std::function<void()>> listeners;
  int depth = 0;  // of submits and setAvailables within one another
};

}  // namespace Refhost
