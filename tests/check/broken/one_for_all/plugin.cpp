// Makes one plug-in, and returns it again.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin;
Plugin* living = nullptr;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  ~Plugin() override { living = nullptr; }
};

}  // namespace

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  if (living != nullptr && name.view() == "effect") return living;
  UIPlugin* made = make<Plugin>(host, std::move(manager), name, reserved, std::move(library));
  living = static_cast<Plugin*>(made);
  return made;
}
