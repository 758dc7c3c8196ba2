// Properties: the settings that the tab edits, the host's configuration, and how a plug-in changes and follows them.
//
//   1. manager->modelProperties()->child(name) finds a property; it stays valid for the life of the plug-in;
//   2. connect(*model->selectionChangeSignal(name), ...) and enableChangeSignal follow it;
//   3. a user's choice is written back as one State::Transition, submitted once: the host applies it, runs its
//      constraints until nothing changes, and fires the signals, all before submit returns.
//
// The initial state. After the ready signal the host announces every property, in the model's order: an enable change
// for each option that is unavailable, then a selection change with the value. A plug-in therefore sets its widgets in
// its handlers alone. Without a GUI nothing is announced.
//
// What submit does, in this order:
//
//   1. It assigns the pairs, and runs the model's constraints until nothing changes. A constraint that makes a chosen
//      option unavailable sets its property to the default or, if that is unavailable too, to the first available
//      option.
//   2. It fires an enable change for each option whose availability has changed, in the model's order.
//   3. It fires a selection change for each submitted property, in the order of their first pairs, even if the value is
//      the old one; then for each other property whose value the constraints have changed, in the model's order. While
//      a property's own selection change is being delivered, a pair for it with the value that it has fires nothing,
//      which is what lets a handler write back what it was told.
//   4. When an option becomes available while it is chosen, its property's selection change follows, even if nobody
//      submitted it, and so do those of the feature's details: a plug-in clears what it shows of an unavailable option.
//   5. A signal is overtaken, and not fired, when a transition that a handler has submitted meanwhile has fired that
//      property's selection change, or that option's enable change.
//
// An exception of a handler ends the delivery of that submit, and passes through it; the values stay assigned. The
// initial state is announced to the end, and then the first exception is thrown.
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
  // The value as UTF-8; empty when unset. [plug-in]
  virtual String narrowValue() = 0;

  // The value as UTF-16; empty when unset. [plug-in]
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

  // The child with that name; null when there is none. [plug-in]
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
  // The driver's properties; the same object each time. [plug-in]
  virtual SmartPtr<ModelRoot> modelProperties() = 0;

  // The host's settings by key, for example "UIMode"; a key that is not set has no child. [plug-in]
  virtual SmartPtr<Property> configuration() = 0;

  // The switches of the XML customisation; one that is not set has no child. [plug-in]
  virtual SmartPtr<Property> xmlCustomisation() = 0;

  // A new transition that holds one pair. Throws XUL::KeyError for an unknown property. [plug-in]
  virtual SmartPtr<State::Transition> transition(WStringView property, WStringView value) = 0;

  // Applies the transition's pairs, runs the constraints, fires the signals, and returns (see the top). The values need
  // not be options that the model lists. Throws Exception for a transition that was submitted already, and what
  // handlers throw. [plug-in]
  virtual void submit(SmartPtr<State::Transition> transition) = 0;

  // Whether the constraints allow the value now; false for an unknown property or option. [plug-in]
  virtual bool valueAllowed(WStringView property, WStringView value) = 0;

  // Fires when the user loads a profile, after its values were applied to the model. [plug-in]
  virtual SmartPtr<Signal<ImportExportEventArg>> profileImportSignal() = 0;

  // Fires when the user saves a profile. [plug-in]
  virtual SmartPtr<Signal<ImportExportEventArg>> profileExportSignal() = 0;
};

using PropertyManager = SmartPtr<IPropertyManager>;

}  // namespace Kiln
