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

// A node of a property tree: a value, and named children. Implemented by the host.
class Property : public RefCount {
 public:
  // The value, as UTF-8 and as UTF-16; empty when unset. [plug-in]
  virtual String narrowValue() = 0;
  virtual WString wideValue() = 0;

  // Whether the value reads as true: "True", "true" or "1". [plug-in]
  virtual bool boolValue() = 0;

  // Whether the value is exactly `text`. [plug-in]
  virtual bool equals(WStringView text) = 0;

  // Writes the value directly, outside any transition: no constraint runs and no signal fires. Throws Exception when
  // the property is read-only. [plug-in]
  virtual void setValue(WStringView text) = 0;

  // Whether there is a child with that name. [plug-in]
  virtual bool hasChild(WStringView name) = 0;

  // The child with that name; empty when there is none. [plug-in]
  virtual SmartPtr<Property> child(WStringView name) = 0;
};

// An option value became available or unavailable. Valid for the duration of the call.
struct ModelEnableChange {
  WString property;
  WString option;
  bool enabled;
};

// A property was assigned a value, possibly the one it already had. Valid for the duration of the call.
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

  // Fires when the property is assigned a value. Throws XUL::KeyError as above. [plug-in]
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

// The plug-in's view of the host's state. Implemented by the host.
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

  // Fire when the user loads a profile (after its values were applied to the model), and when the user saves one.
  // [plug-in]
  virtual SmartPtr<Signal<ImportExportEventArg>> profileImportSignal() = 0;
  virtual SmartPtr<Signal<ImportExportEventArg>> profileExportSignal() = 0;
};

using PropertyManager = SmartPtr<IPropertyManager>;

}  // namespace Kiln
