// Has a second function to call.
#include "tests/check/skeleton.h"

using namespace Broken;

KILN_EXPORT int soundVersion() { return 1; }

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  return make<Sound>(host, std::move(manager), name, reserved, std::move(library));
}
