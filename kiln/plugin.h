// What a plug-in implements.
//
// The order of calls:
//
//   1. createPlugin          the library's one exported function makes the plug-in
//   2. create, initialise
//   3. configureUI           with a GUI, or
//      rootlessActivation    without one
//   4. the GUI's ready signal, then any of the plug-in's other handlers
//   5. the last reference is released: the plug-in is destroyed
//
// PTPlugin's operations may be called at any time after 1, with or without a GUI.
#pragma once

#include "kiln/dom.h"
#include "kiln/gui.h"
#include "kiln/host.h"
#include "kiln/property.h"
#include "kiln/services.h"

namespace Kiln {

// The scope of a PrintTicket. Plug-ins pass it through.
enum class PTLevel : std::int32_t { page, document, job };

class IPlugin : public virtual RefCount {};

// A plug-in with a user interface. Its virtual functions are, in this order, the four that a plug-in implements, then
// the three that it inherits unchanged.
class UIPlugin : public IPlugin, public SignalTarget {
 public:
  virtual void create() = 0;      // [host]
  virtual void initialise() = 0;  // [host]

  // Loads the plug-in's layout into `gui`, or connects to its ready signal. Called at most once. [host]
  virtual void configureUI(SmartPtr<XUL::GUI> gui) = 0;

  // Starts the plug-in without a GUI. True when it wants to be called again. [host]
  virtual bool rootlessActivation() = 0;

  // The property manager given at construction. [plug-in]
  virtual PropertyManager propertyManager() { return manager; }

  // Whether the host has enabled this plug-in. [plug-in]
  virtual bool isActive() { return theHost.isPluginActive(name); }

  // Opens the help for what the plug-in shows. [plug-in, ready]
  virtual void showHelp() { theHost.showPluginHelp(name); }

 protected:
  UIPlugin(Host& lender, const String& pluginName, const PropertyManager& properties,
           SmartPtr<Services::Library> ownLibrary)
      : theHost(lender),
        name(pluginName),
        manager(properties),
        library(std::move(ownLibrary)) {}

  Host& host() const noexcept { return theHost; }

 private:
  Host& theHost;
  String name;
  PropertyManager manager;
  SmartPtr<Services::Library> library;
};

// A plug-in that converts its properties to PrintTickets and back.
class PTPlugin : public virtual RefCount {
 public:
  // The schema that maps properties to ticket keywords. [host]
  virtual SmartPtr<Dom::INode> getSchema() = 0;

  // The ticket of the properties; the properties are unchanged when it returns or throws. [host]
  virtual SmartPtr<Dom::INode> convertPMtoPT(Property& properties, PTLevel level) = 0;

  // Writes the ticket's settings into the properties. [host]
  virtual void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& properties) = 0;

 protected:
  explicit PTPlugin(Host& host) noexcept : tickets(host.tickets()) {}

  SmartPtr<Services::Tickets> tickets;
};

// The exported function "createPlugin": returns a new plug-in with a count of 0, or null when the library has none with
// that name or memory is exhausted. `reserved` is ignored. [host]
using CreatePlugin = UIPlugin*(Host& host, PropertyManager manager, const String& name, void* reserved,
                               SmartPtr<Services::Library> library);

}  // namespace Kiln

#ifdef _WIN32
#define KILN_EXPORT extern "C" __declspec(dllexport)
#else
#define KILN_EXPORT extern "C" __attribute__((visibility("default")))
#endif
