// A property manager, and the root of its model, that answer as others do, and tell of each call first.
#pragma once

#include "check/around/watch.h"
#include "host/object.h"
#include "kiln/property.h"

namespace Checking {

class ModelAround : public Kiln::ModelRoot {
 public:
  ModelAround(Kiln::SmartPtr<Kiln::ModelRoot> answering, Watch& toldOfCalls)
      : inner(std::move(answering)),
        watch(toldOfCalls) {}

  Kiln::String narrowValue() override { return at("Property::narrowValue").narrowValue(); }
  Kiln::WString wideValue() override { return at("Property::wideValue").wideValue(); }
  bool boolValue() override { return at("Property::boolValue").boolValue(); }
  bool equals(Kiln::WStringView text) override { return at("Property::equals").equals(text); }
  void setValue(Kiln::WStringView text) override { at("Property::setValue").setValue(text); }
  bool hasChild(Kiln::WStringView name) override { return at("Property::hasChild").hasChild(name); }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView name) override { return at("Property::child").child(name); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelEnableChange&>> enableChangeSignal(Kiln::WStringView property) override {
    return at("ModelRoot::enableChangeSignal").enableChangeSignal(property);
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ModelSelectionChange&>> selectionChangeSignal(Kiln::WStringView property) override {
    return at("ModelRoot::selectionChangeSignal").selectionChangeSignal(property);
  }

 protected:
  const Kiln::SmartPtr<Kiln::ModelRoot> inner;

 private:
  Kiln::ModelRoot& at(const char* operation) {
    watch.calling(operation, false);
    return *inner;
  }

  Watch& watch;
};

class ManagerAround : public Kiln::IPropertyManager {
 public:
  // `model` stands around the model of `answering`.
  ManagerAround(Kiln::PropertyManager answering, Kiln::SmartPtr<Kiln::ModelRoot> model, Watch& toldOfCalls)
      : inner(std::move(answering)),
        root(std::move(model)),
        watch(toldOfCalls) {}

  Kiln::SmartPtr<Kiln::ModelRoot> modelProperties() override {
    at("IPropertyManager::modelProperties");
    return root;
  }
  Kiln::SmartPtr<Kiln::Property> configuration() override {
    return at("IPropertyManager::configuration").configuration();
  }
  Kiln::SmartPtr<Kiln::Property> xmlCustomisation() override {
    return at("IPropertyManager::xmlCustomisation").xmlCustomisation();
  }
  Kiln::SmartPtr<Kiln::State::Transition> transition(Kiln::WStringView property, Kiln::WStringView value) override {
    return at("IPropertyManager::transition").transition(property, value);
  }
  void submit(Kiln::SmartPtr<Kiln::State::Transition> transition) override {
    at("IPropertyManager::submit").submit(std::move(transition));
  }
  bool valueAllowed(Kiln::WStringView property, Kiln::WStringView value) override {
    return at("IPropertyManager::valueAllowed").valueAllowed(property, value);
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileImportSignal() override {
    return at("IPropertyManager::profileImportSignal").profileImportSignal();
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileExportSignal() override {
    return at("IPropertyManager::profileExportSignal").profileExportSignal();
  }

 protected:
  const Kiln::PropertyManager inner;
  const Kiln::SmartPtr<Kiln::ModelRoot> root;

 private:
  Kiln::IPropertyManager& at(const char* operation) {
    watch.calling(operation, false);
    return *inner;
  }

  Watch& watch;
};

}  // namespace Checking
