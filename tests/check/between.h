// What stands between the packaged reference host and a plug-in, in hosts that break something.
#pragma once

#include "check/around/gui_around.h"
#include "check/around/host_around.h"
#include "check/around/properties_around.h"
#include "kiln/plugin.h"
#include "tests/check/reference_host.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace BrokenHosts {

using namespace Kiln;
using Checking::GuiAround;
using Checking::HostAround;
using Checking::ManagerAround;
using Checking::ModelAround;
using Refhost::make;
using Testing::makePlugin;
using Testing::PackagedHost;

struct Nobody final : Checking::Watch {
  void calling(const char*, bool) override {}
};
inline Nobody nobody;

using OwnLibrary = SmartPtr<Services::Library>;

// The plug-in gets another host.
template <class Around>
UIPlugin* withHost(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  static std::unique_ptr<Around> around;
  if (reserved != nullptr) return makePlugin(host, manager, name, reserved, library);
  around = std::make_unique<Around>(host, nobody);
  return makePlugin(*around, manager, name, reserved, library);
}

// The plug-in gets another property manager, and another model.
template <class Around, class Model = ModelAround>
UIPlugin* withManager(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  if (reserved != nullptr) return makePlugin(host, manager, name, reserved, library);
  const SmartPtr<ModelRoot> model = make<Model>(manager->modelProperties(), nobody);
  return makePlugin(host, make<Around>(manager, model, nobody), name, reserved, library);
}

// A plug-in around the one of the checks.
class PluginAround : public UIPlugin {
 public:
  PluginAround(Host& lender, const String& name, const PropertyManager& manager, OwnLibrary library, UIPlugin* made)
      : UIPlugin(lender, name, manager, std::move(library)),
        inner(made) {}

  void create() override { inner->create(); }
  void initialise() override { inner->initialise(); }
  void configureUI(SmartPtr<XUL::GUI> gui) override { inner->configureUI(std::move(gui)); }
  bool rootlessActivation() override { return inner->rootlessActivation(); }
  void* queryInterface(StringView asked) noexcept override { return inner->queryInterface(asked); }

 protected:
  const SmartPtr<UIPlugin> inner;
};

// The host gets another plug-in.
template <class Around>
UIPlugin* withPlugin(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  UIPlugin* made = makePlugin(host, manager, name, reserved, library);
  return made == nullptr ? nullptr : new (host.allocator()) Around(host, name, manager, library, made);
}

// The plug-in gets another GUI.
template <class Around>
class PluginWithGui final : public PluginAround {
 public:
  using PluginAround::PluginAround;
  void configureUI(SmartPtr<XUL::GUI> gui) override {
    inner->configureUI(make<Around>(gui, gui->readySignal(), nobody));
  }
};
template <class Around>
UIPlugin* withGui(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  return withPlugin<PluginWithGui<Around>>(host, std::move(manager), name, reserved, std::move(library));
}

// How many submits are running.
inline int submits = 0;

// A manager that counts them.
class CountingManager : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  void submit(SmartPtr<State::Transition> transition) override {
    ++submits;
    try {
      inner->submit(std::move(transition));
    } catch (...) {
      --submits;
      throw;
    }
    --submits;
    done();
  }

 protected:
  virtual void done() {}
};

// A signal that passes on, as it likes, what another one fires.
template <class Arg>
class SignalAround final : public Signal<Arg>, public SignalTarget {
 public:
  using Passing = std::function<void(SignalAround& signal, Arg argument)>;

  SignalAround(const SmartPtr<Signal<Arg>>& answering, Passing passes) : passing(std::move(passes)) {
    connect(*answering, *this, &SignalAround::fired);
  }

  void attach(SmartPtr<ArgumentSlot<Arg>> slot) override { slots.push_back(std::move(slot)); }
  Allocator& allocator() noexcept override { return Refhost::heap(); }
  void deliver(Arg argument) {
    for (std::size_t i = 0; i < slots.size(); ++i) slots[i]->call(argument);
  }

  std::vector<SmartPtr<ArgumentSlot<Arg>>> slots;

 private:
  void fired(Arg argument) { passing(*this, argument); }

  Passing passing;
};

using SelectionSignal = SignalAround<ModelSelectionChange&>;
using EnableSignal = SignalAround<ModelEnableChange&>;

// A model whose selection changes pass through a function of the derived class.
class PassingModel : public ModelAround {
 public:
  using ModelAround::ModelAround;
  SmartPtr<Signal<ModelSelectionChange&>> selectionChangeSignal(WStringView name) override {
    auto& signal = selections[std::u16string(name.view())];
    if (!signal)
      signal = make<SelectionSignal>(
          inner->selectionChangeSignal(name),
          [this, own = std::u16string(name.view())](auto& passed, auto& change) { pass(own, passed, change); });
    return signal;
  }

 protected:
  virtual void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) = 0;

  std::map<std::u16string, SmartPtr<SelectionSignal>> selections;
};

}  // namespace BrokenHosts
