// Does not keep what a ticket says.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& to) override {
    Sound::convertPTtoPM(std::move(ticket), to);
    to.child(u"Switch")->setValue(u"Off");
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
