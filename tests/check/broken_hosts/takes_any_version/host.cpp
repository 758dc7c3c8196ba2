// Takes plug-ins of any version.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

UIPlugin* create(Host& host, PropertyManager manager, const String& name, void* reserved, OwnLibrary library) {
  UIPlugin* made = makePlugin(host, manager, name, reserved, library);
  answerVersion(name, reserved);
  return made;
}

}  // namespace

EXPORT_HOST(PackagedHost, create)
