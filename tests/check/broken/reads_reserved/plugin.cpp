// Takes the reserved argument for a counter of its own.
#include "tests/check/skeleton.h"

using namespace Broken;

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  if (answerVersion(name, reserved)) return nullptr;
  if (reserved != nullptr) ++*static_cast<int*>(reserved);
  return make<Sound>(host, std::move(manager), name, nullptr, std::move(library));
}
