// Makes no tickets before it is initialised.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void initialise() override { isInitialised = true; }
  SmartPtr<Dom::INode> convertPMtoPT(Property& from, PTLevel level) override {
    if (!isInitialised) throw Exception(host().allocator(), "It is too early.");
    return Sound::convertPMtoPT(from, level);
  }

 private:
  bool isInitialised = false;
};

}  // namespace

EXPORT_PLUGIN(Plugin)
