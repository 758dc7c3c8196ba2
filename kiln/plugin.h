// What a plug-in implements.
//
// The order of calls:
//
//   1. createPlugin          the library's one exported function tells its version (kiln/version.h), and makes the
//                            plug-in
//   2. create, initialise
//   3. configureUI           with a GUI, or
//      rootlessActivation    without one
//   4. the GUI's ready signal, once, after configureUI has returned
//   5. the initial state: the host announces every property (kiln/property.h)
//   6. the plug-in's handlers, in the order of what the user and the host do
//   7. the host drops its references: to the plug-in first, then to what it is connected to (the GUI with its widgets
//      and dialogs, the property manager), to the host itself, and to the library last. A plug-in makes no call to the
//      host from its destructor but those that release what it holds.
//
// PTPlugin's operations may be called at any time after 1, with or without a GUI; and nothing is called after 7.
//
// A plug-in needs, from its compiler: virtual functions and exceptions with the same layout as the host's (on Windows
// /GR, /EHsc, and no /vd other than the host's; with others the default of the platform's C++ ABI), exceptions and
// run-time types switched on, and createPlugin exported by its plain name. All else may be hidden
// (-fvisibility=hidden).
#pragma once

#include "kiln/dom.h"
#include "kiln/gui.h"
#include "kiln/host.h"
#include "kiln/property.h"
#include "kiln/services.h"
#include "kiln/version.h"

namespace Kiln {

// The scope of a PrintTicket: the settings of one page, of one document (and its pages), or of the whole job (and its
// documents and pages). A plug-in passes it on to Tickets::propertiesToTicket, which leaves settings of a wider scope
// out: page-scoped keywords are in every ticket, job-scoped ones in a job's alone.
enum class PTLevel : std::int32_t { page, document, job };

class IPlugin : public virtual RefCount {};

// A plug-in with a user interface. Its virtual functions are, in this order, the four that a plug-in implements, then
// the three that it inherits unchanged. An exception that leaves one of the four ends the opening with its sentence.
class UIPlugin : public IPlugin, public SignalTarget {
 public:
  // The plug-in is complete; the host's services and properties may be used from now on. Called once. [host]
  virtual void create() = 0;

  // The last call before configureUI or rootlessActivation. Called once. [host]
  virtual void initialise() = 0;

  // Loads the plug-in's layout into `gui`, or connects to its ready signal. Called at most once, and not together with
  // rootlessActivation; `gui` is never null, and the plug-in may keep it. [host]
  virtual void configureUI(SmartPtr<XUL::GUI> gui) = 0;

  // Starts the plug-in without a GUI. False when it is done; true asks the host to call it once more, for a plug-in
  // that starts in steps. A host calls it 100 times at most. [host]
  virtual bool rootlessActivation() = 0;

  // The property manager given at construction; null only if that was. [plug-in]
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

// A plug-in that converts its properties to PrintTickets and back. The host asks the UIPlugin for it by name.
class PTPlugin : public virtual RefCount {
 public:
  static constexpr const char* interfaceName = "PTPlugin";

  // The schema that maps properties to ticket keywords: the root of the document that Tickets::loadSchema has read.
  // Null when there is none; the host then makes no ticket. [host]
  virtual SmartPtr<Dom::INode> getSchema() = 0;

  // The ticket of the properties, a "PrintTicket" element; null when it cannot be made. The properties are unchanged
  // when it returns or throws. [host]
  virtual SmartPtr<Dom::INode> convertPMtoPT(Property& properties, PTLevel level) = 0;

  // Writes the ticket's settings into the properties, all or nothing. `ticket` is never null. Throws Exception when it
  // is invalid. [host]
  virtual void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& properties) = 0;

  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : RefCount::queryInterface(asked);
  }

 protected:
  // Throws what Host::tickets throws.
  explicit PTPlugin(Host& host) : tickets(host.tickets()) {}

  SmartPtr<Services::Tickets> tickets;
};

// The exported function "createPlugin": returns a new plug-in with a count of 0; or null when the library has none with
// that name, when memory is exhausted, or when it was asked for its version (kiln/version.h). `reserved` is ignored
// otherwise, and may be anything. `manager` and `library` are the plug-in's to keep. [host]
using CreatePlugin = UIPlugin*(Host& host, PropertyManager manager, const String& name, void* reserved,
                               SmartPtr<Services::Library> library);

}  // namespace Kiln

#ifdef _WIN32
#define KILN_EXPORT extern "C" __declspec(dllexport)
#else
#define KILN_EXPORT extern "C" __attribute__((visibility("default")))
#endif
