// Makes a ticket of a job for every level.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  SmartPtr<Dom::INode> convertPMtoPT(Property& from, PTLevel) override {
    return Sound::convertPMtoPT(from, PTLevel::job);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
