// The library's one exported function.
#include "effect/effect_plugin.h"

KILN_EXPORT Kiln::UIPlugin* createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,
                                         void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library) {
  if (Kiln::answerVersion(name, reserved)) return nullptr;
  // Released before this returns, whichever side destroys the parameters.
  const Kiln::PropertyManager ownManager = std::move(manager);
  const Kiln::SmartPtr<Kiln::Services::Library> ownLibrary = std::move(library);
  if (name.view() != Effect::pluginName) return nullptr;
  return new (host.allocator()) Kiln::XUL::EffectPlugin(host, name, ownManager, ownLibrary);
}
