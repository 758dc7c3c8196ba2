// The plug-in as an object, in the reference host or one around it: for what no action of a user's can show.
#pragma once

#include "effect/effect_plugin.h"
#include "host/gui.h"
#include "tests/support/host_world.h"

#include <filesystem>

namespace Testing {

struct PluginObject {
  PluginObject() {
    for (const char* name : {"user", "profile"}) std::filesystem::create_directories(home.path / name);
  }

  // Makes the plug-in.
  Kiln::XUL::EffectPlugin& make(Kiln::Host& host) {
    plugin = Refhost::make<Kiln::XUL::EffectPlugin>(host, Refhost::text("effect"), world.manager,
                                                    Kiln::SmartPtr<Kiln::Services::Library>());
    return *plugin;
  }

  // Makes it, and shows its tab.
  Kiln::XUL::EffectPlugin& open(Kiln::Host& host) {
    world.set(u"UIMode", u"DocProp");
    make(host).configureUI(gui);
    gui->fireReady();
    return *plugin;
  }

  TemporaryFolder home;
  HostWorld world{home.path};
  Refhost::WidgetWorld widgets{world.trace, world.strings, nullptr, [](const auto& action) { action(); },
                               [](Refhost::WidgetNode&) {}};
  Refhost::LayoutReader layouts{world.chrome, {}};
  Kiln::SmartPtr<Refhost::Gui> gui =
      Refhost::make<Refhost::Gui>(Refhost::GuiWorld{world.face, layouts, widgets}, world.trace);
  Kiln::SmartPtr<Kiln::XUL::EffectPlugin> plugin;
};

}  // namespace Testing
