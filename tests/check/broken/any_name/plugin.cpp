// Is the plug-in of whatever name.
#include "tests/check/skeleton.h"

using namespace Broken;

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  if (answerVersion(name, reserved)) return nullptr;
  return make<Sound>(host, std::move(manager), String(host.allocator(), "effect"), nullptr, std::move(library));
}
