// Does not ask for the version.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

UIPlugin* create(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  if (reserved == nullptr) return makePlugin(host, manager, name, reserved, library);
  answerVersion(name, reserved);
  return nullptr;
}

}  // namespace

EXPORT_HOST(PackagedHost, create)
