// Properties: the settings that the tab edits, the host's configuration, and how a plug-in changes and follows them.
//
//   1. manager->modelProperties()->child(name) finds a property; it stays valid for the life of the plug-in;
//   2. connect(*model->selectionChangeSignal(name), ...) and enableChangeSignal follow it;
//   3. a user's choice is written back as one State::Transition, submitted once: the host applies it, runs its
//      constraints until nothing changes, and fires the signals, all before submit returns.
//
// Every value is text. Booleans are "True" and "False". Comparisons are exact and case-sensitive.
#pragma once

#include "kiln/profile.h"
#include "kiln/ref_count.h"
#include "kiln/signal.h"
#include "kiln/text.h"

namespace Kiln {

// A node of a property tree: a value, and children by name. Implemented by the host.
class Property : public RefCount {
 public:
  // The value; empty when there is none. UTF-8, and UTF-16. [plug-in]
  virtual String narrowValue() = 0;
  virtual WString wideValue() = 0;

  // Whether the value reads as true: "True", "true" or "1". [plug-in]
  virtual bool boolValue() = 0;

  // Whether the value is exactly `text`. [plug-in]
  virtual bool equals(WStringView text) = 0;

  // Writes the value as it is, outside any transition: no constraint runs and no signal fires. Throws Exception where
  // the property is read-only. [plug-in]
  virtual void setValue(WStringView text) = 0;

  // Whether there is a child of that name. [plug-in]
  virtual bool hasChild(WStringView name) = 0;

  // The child of that name; empty when there is none. [plug-in]
  virtual SmartPtr<Property> child(WStringView name) = 0;
};

// An option value became available or unavailable. Valid for the duration of the call.
struct ModelEnableChange {
  WString property;
  WString option;
  bool enabled;
};

// A property was given a value, not necessarily another one than it had. Valid for the duration of the call.
struct ModelSelectionChange {
  SmartPtr<Property> property;
  WString value;
};

// The root of the model's properties.
class ModelRoot : public Property {
 public:
  // Fires when an option value of the property becomes available or unavailable. Throws XUL::KeyError for a name that
  // the model does not have. [plug-in]
  virtual SmartPtr<Signal<ModelEnableChange&>> enableChangeSignal(WStringView property) = 0;

  // Fires when the property is given a value. Throws XUL::KeyError as above. [plug-in]
  virtual SmartPtr<Signal<ModelSelectionChange&>> selectionChangeSignal(WStringView property) = 0;
};

namespace State {

// Property/value pairs in order, applied together. Made by IPropertyManager::transition, submitted at most once.
class Transition : public RefCount {
 public:
  // Appends a pair; a later pair for the same property wins. Throws XUL::KeyError for an unknown property. [plug-in]
  virtual void add(WStringView property, WStringView value) = 0;
};

}  // namespace State

// All that a plug-in sees of the host's state. Implemented by the host.
class IPropertyManager : public RefCount {
 public:
  // The driver's properties. [plug-in]
  virtual SmartPtr<ModelRoot> modelProperties() = 0;

  // The host's settings by key, for example "UIMode"; a key that is not set has no child. [plug-in]
  virtual SmartPtr<Property> configuration() = 0;

  // The switches of the XML customisation. [plug-in]
  virtual SmartPtr<Property> xmlCustomisation() = 0;

  // A new transition that holds one pair. Throws XUL::KeyError for an unknown property. [plug-in]
  virtual SmartPtr<State::Transition> transition(WStringView property, WStringView value) = 0;

  // Applies the transition's pairs, runs the constraints, fires the signals, and returns. The values need not be
  // options that the model lists. [plug-in]
  virtual void submit(SmartPtr<State::Transition> transition) = 0;

  // Whether the constraints allow the value now; false for an unknown property or option. [plug-in]
  virtual bool valueAllowed(WStringView property, WStringView value) = 0;

  // Fire when the user loads a profile (its values are then in the model already), and saves one. [plug-in]
  virtual SmartPtr<Signal<ImportExportEventArg>> profileImportSignal() = 0;
  virtual SmartPtr<Signal<ImportExportEventArg>> profileExportSignal() = 0;
};

using PropertyManager = SmartPtr<IPropertyManager>;

}  // namespace Kiln
