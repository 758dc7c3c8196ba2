// Has no schema.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  SmartPtr<Dom::INode> getSchema() override { return nullptr; }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
