// The property model: values, option availability, rules, and change signals.
//
// Submit applies a transition, runs the rules until nothing changes, and then fires the signals:
//
//   - A rule that makes a chosen option unavailable sets its property to the default, or, if that is unavailable
//     too, to the first available option. An option disabled by setAvailable stays chosen, but does not print.
//   - First the availability changes, in the model's order, then the selection changes: the submitted properties in
//     the order of their first pair, then other changed ones in the model's order.
//   - Plug-ins clear what they show of an option that becomes unavailable. When an option becomes available while it is
//     chosen, its selection fires again; so do the details of a feature that is on when one of its options does.
//   - A submitted pair fires even if the value is unchanged, except while that property's own selection change is
//     being delivered: then only a new value fires.
//   - A signal superseded by a nested transition's newer signal for the same property or option is dropped.
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

  // The value; nothing for an unknown name.
  std::optional<std::u16string> value(std::u16string_view name) const;

  // Sets a property's value when the run opens, without signals; rules run in `started`. False for an unknown name.
  bool start(std::u16string_view name, std::u16string_view value);
  void started() { applyRules(); }

  // Whether the option can be chosen now. True for any value of a free-text property; false for an unknown property or
  // option.
  bool allows(std::u16string_view name, std::u16string_view option) const;

  // Applies pairs as above. Throws Kiln::XUL::KeyError, without a change, when a name is unknown.
  void submit(const TracePairs& pairs);

  // Overrides an option's availability until the rules run again. Throws KeyError for an unknown property.
  void setAvailable(std::u16string_view name, std::u16string_view option, bool available);

  // Fires the current state: for each property in the model's order, an enable change for each unavailable option, then
  // a selection change. Announces the other properties, too, when a slot throws; then rethrows the first exception.
  void announce();

  // Called after the outermost submit or setAvailable has fired its signals, and after a direct write of a value.
  void onChange(std::function<void()> listener) { listeners.push_back(std::move(listener)); }

  // All properties and values in the model's order.
  TracePairs values() const;

  // The values to print: values() with each unavailable option replaced by the default.
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

  // Whether the model has a property with that name, and whether users may not set it.
  bool isKnown(std::u16string_view name) const { return find(name) != nullptr; }
  bool isContext(std::u16string_view name) const;

 private:
  friend class ModelProperty;

  // A signal to fire for a change, and the number of its kind fired before.
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
  void announceAgain(Pending& pending) const;
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
  int depth = 0;  // nesting of submits and setAvailables
};

}  // namespace Refhost
