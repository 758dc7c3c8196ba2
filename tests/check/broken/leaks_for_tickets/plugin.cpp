// Keeps a block of memory for each ticket.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  SmartPtr<Dom::INode> getSchema() override {
    host().allocator().allocate(8);
    return Sound::getSchema();
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
