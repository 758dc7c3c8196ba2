// The property model: values, availability of options, and the signals of both. This host has no constraints.
#pragma once

#include "objects.h"

#include <algorithm>
#include <map>

namespace ExampleHost {

// A value with children; Base is Kiln::Property or a class of its own.
template <class Base>
class Tree : public Base {
 public:
  Kiln::String narrowValue() override { return {memory, narrow(value)}; }
  Kiln::WString wideValue() override { return text(value); }
  bool boolValue() override { return value == u"True" || value == u"true" || value == u"1"; }
  bool equals(Kiln::WStringView other) override { return value == other.view(); }
  void setValue(Kiln::WStringView written) override { value = written.view(); }
  bool hasChild(Kiln::WStringView name) override { return children.contains(std::u16string(name.view())); }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView name) override {
    const auto found = children.find(std::u16string(name.view()));
    return found == children.end() ? nullptr : found->second;
  }

  std::u16string value;
  std::map<std::u16string, Kiln::SmartPtr<Kiln::Property>> children;
};

// A folder of settings, or one of them.
class Settings final : public Tree<Kiln::Property> {
 public:
  void set(const std::u16string& key, const std::u16string& setting) {
    auto child = make<Settings>();
    child->value = setting;
    children[key] = child;
  }
};

struct ModelProperty final : Tree<Kiln::Property> {
  std::u16string name;
  OwnedEvent<Kiln::ModelEnableChange&> enableChange = make<Event<Kiln::ModelEnableChange&>>();
  OwnedEvent<Kiln::ModelSelectionChange&> selectionChange = make<Event<Kiln::ModelSelectionChange&>>();
  std::map<std::u16string, bool> options;  // whether each is available
  int fired = 0;                           // selection changes
  bool isDelivering = false;               // whether one is being delivered

  void fire() {
    ++fired;
    const bool before = std::exchange(isDelivering, true);
    Kiln::ModelSelectionChange change{this, text(value)};
    try {
      selectionChange->fire(change);
    } catch (...) {
      isDelivering = before;
      throw;
    }
    isDelivering = before;
  }

  void setAvailable(const std::u16string& option, bool available) {
    options[option] = available;
    Kiln::ModelEnableChange change{text(name), text(option), available};
    enableChange->fire(change);
    if (available && value == option) fire();  // the plug-in has cleared what it shows
  }
};

class Model final : public Tree<Kiln::ModelRoot> {
 public:
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelEnableChange&>> enableChangeSignal(Kiln::WStringView name) override {
    return demand(name).enableChange;
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelSelectionChange&>> selectionChangeSignal(Kiln::WStringView name) override {
    return demand(name).selectionChange;
  }

  void add(const Kiln::SmartPtr<ModelProperty>& property) {
    inOrder.push_back(property);
    children[property->name] = property;
  }

  ModelProperty& demand(Kiln::WStringView name) const {
    for (const auto& property : inOrder)
      if (property->name == name.view()) return *property;
    throw Kiln::XUL::KeyError(memory, "The model has no property " + narrow(name) + ".");
  }

  // The initial state, after the GUI's ready signal.
  void announce() const {
    for (const auto& property : inOrder) {
      for (const auto& [option, available] : property->options) {
        Kiln::ModelEnableChange change{text(property->name), text(option), available};
        if (!available) property->enableChange->fire(change);
      }
      property->fire();
    }
  }

  // Assigns all pairs, then fires for each property, in the order of their first pairs. A property that is told its own
  // value by its own handler does not fire; nor does one that a handler's transition has fired meanwhile.
  void submit(const std::vector<std::pair<std::u16string, std::u16string>>& pairs) const {
    std::vector<std::pair<ModelProperty*, int>> changed;
    for (const auto& [name, assigned] : pairs) {
      ModelProperty* property = &demand(name);
      const bool isListed =
          std::any_of(changed.begin(), changed.end(), [=](auto& one) { return one.first == property; });
      const bool isKnown = property->isDelivering && property->value == assigned;
      if (!isListed && !isKnown) changed.emplace_back(property, property->fired);
      property->value = assigned;
    }
    for (const auto& [property, firedBefore] : changed)
      if (property->fired == firedBefore) property->fire();
  }

 private:
  std::vector<Kiln::SmartPtr<ModelProperty>> inOrder;
};

class Transition final : public Kiln::State::Transition {
 public:
  static constexpr const char* interfaceName = "ExampleHost::Transition";  // by which the host knows its own
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::State::Transition::queryInterface(asked);
  }
  explicit Transition(const Model& properties) : model(properties) {}
  void add(Kiln::WStringView property, Kiln::WStringView assigned) override {
    model.demand(property);
    pairs.emplace_back(property.view(), assigned.view());
  }
  std::vector<std::pair<std::u16string, std::u16string>> pairs;
  bool isSubmitted = false;

 private:
  const Model& model;
};

class PropertyManager final : public Kiln::IPropertyManager {
 public:
  Kiln::SmartPtr<Kiln::ModelRoot> modelProperties() override { return model; }
  Kiln::SmartPtr<Kiln::Property> configuration() override { return settings; }
  Kiln::SmartPtr<Kiln::Property> xmlCustomisation() override { return customisation; }
  Kiln::SmartPtr<Kiln::State::Transition> transition(Kiln::WStringView property, Kiln::WStringView value) override {
    auto made = make<Transition>(*model);
    made->add(property, value);
    return made;
  }
  void submit(Kiln::SmartPtr<Kiln::State::Transition> transition) override {
    const auto own = Kiln::smartCast<Transition>(transition);
    if (!own) throw failure("IPropertyManager::submit was called without a transition.");
    if (std::exchange(own->isSubmitted, true)) throw failure("The transition was submitted already.");
    for (const auto& [name, value] : own->pairs) report("sets " + narrow(name) + " to " + narrow(value));
    model->submit(own->pairs);
  }
  bool valueAllowed(Kiln::WStringView property, Kiln::WStringView value) override {
    if (!model->hasChild(property)) return false;
    const auto& options = model->demand(property).options;
    const auto found = options.find(std::u16string(value.view()));
    return found == options.end() ? options.empty() : found->second;
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileImportSignal() override { return imported; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileExportSignal() override { return exported; }

  Kiln::SmartPtr<Model> model = make<Model>();
  Kiln::SmartPtr<Settings> settings = make<Settings>();
  Kiln::SmartPtr<Settings> customisation = make<Settings>();

 private:
  OwnedEvent<Kiln::ImportExportEventArg> imported = make<Event<Kiln::ImportExportEventArg>>();
  OwnedEvent<Kiln::ImportExportEventArg> exported = make<Event<Kiln::ImportExportEventArg>>();
};

}  // namespace ExampleHost
