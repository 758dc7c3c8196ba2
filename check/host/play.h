// What a check of a host does: opens it with a plug-in that does what the check says, and plays the user.
#pragma once

#include "check/check.h"
#include "check/host_package.h"
#include "files/module.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Checking {

// Calls a function with each argument of a signal.
template <class Arg>
class FunctionSlot final : public Kiln::ArgumentSlot<Arg> {
 public:
  FunctionSlot(Kiln::SignalTarget& target, std::function<void(Arg)> handler)
      : Kiln::ArgumentSlot<Arg>(target),
        called(std::move(handler)) {}
  void call(Arg argument) override {
    if (this->isConnected()) called(static_cast<Arg&&>(argument));
  }

 private:
  std::function<void(Arg)> called;
};

class PlayedPlugin;

class Play final : public PlayedUser {
 public:
  // Loads the library. Throws Failed when that is not possible.
  explicit Play(const Subject& subject);
  ~Play();
  Play(const Play&) = delete;
  Play& operator=(const Play&) = delete;

  // What the plug-in does at each step; empty for nothing.
  std::function<void()> onCreate;
  std::function<void()> onInitialise;
  std::function<void()> onConfigure;  // the layout is loaded before
  std::function<void()> onReady;
  std::function<bool()> onRootless;
  std::function<void()> onDestroy;

  // What the user does in a modal dialog.
  std::function<void()> onDialog;

  // The version that the plug-in tells.
  Kiln::ContractVersion version = Kiln::contractVersion;

  // What has happened, in order.
  std::vector<std::string> log;
  void note(std::string line) { log.push_back(std::move(line)); }

  void open(Opened mode = Opened::docProp);
  void close() { under->close(); }
  HostUnderTest& user() { return *under; }

  // Opens, with `whenReady` as what the plug-in does then. An exception of that ends the check.
  void openAndTry(const std::function<void()>& whenReady);

  // What the plug-in was given; valid while the preferences are open.
  Kiln::Host& host() const { return *givenHost; }
  Kiln::PropertyManager manager() const;
  Kiln::SmartPtr<Kiln::ModelRoot> model() const { return manager()->modelProperties(); }
  Kiln::SmartPtr<Kiln::XUL::GUI> gui() const;
  Kiln::SmartPtr<Kiln::PTPlugin> ticketPart() const;

  // The tab's widget of that kind. Throws Failed when there is none.
  template <class Kind>
  Kiln::SmartPtr<Kind> widget(const char16_t* id) const {
    const auto found = Kiln::smartCast<Kind>(gui()->widgetById(id));
    demand(bool(found), "The tab has no widget of the kind " + std::string(Kind::interfaceName) + " where one is.");
    return found;
  }

  template <class Arg>
  void follow(const Kiln::SmartPtr<Kiln::Signal<Arg>>& signal, std::function<void(Arg)> handler) {
    demand(bool(signal), "A signal is null.");
    signal->attach(slot<Arg>(std::move(handler)));
  }
  template <class Arg>
  Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>> slot(std::function<void(Arg)> handler) {
    Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>> made(new (host().allocator())
                                                     FunctionSlot<Arg>(target(), std::move(handler)));
    if (!made) throw std::bad_alloc();
    return made;
  }

  // Notes each selection change, "Name=value", and each enable change, "Name.option-" or "+", of the check's
  // properties.
  void followProperties();

  // Submits pairs as one transition.
  using Pairs = std::vector<std::pair<const char16_t*, const char16_t*>>;
  void submit(const Pairs& pairs);
  std::string value(const char16_t* property) const;

  void operateDialog() override {
    if (onDialog) onDialog();
  }

 private:
  friend class PlayedPlugin;

  static Kiln::UIPlugin* createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,
                                      void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library);
  Kiln::SignalTarget& target() const;

  std::optional<Files::Module> module;
  std::unique_ptr<HostUnderTest> under;
  Kiln::Host* givenHost = nullptr;
  PlayedPlugin* plugin = nullptr;
};

// The lines of a log in one, for sentences.
std::string shown(const std::vector<std::string>& lines);

// Throws Failed unless the log is this, with `what` in front.
void demandLog(const std::vector<std::string>& found, const std::vector<std::string>& expected,
               const std::string& what);

// The sentence of the Exception that `work` throws; nothing when it throws none.
std::optional<std::string> exceptionOf(const std::function<void()>& work);

}  // namespace Checking
