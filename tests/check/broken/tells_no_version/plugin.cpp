// Never looks at names.
#include "tests/check/skeleton.h"

using namespace Broken;

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  static_cast<void>(reserved);
  if (name.view() != "effect") return nullptr;
  return make<Sound>(host, std::move(manager), name, nullptr, std::move(library));
}
