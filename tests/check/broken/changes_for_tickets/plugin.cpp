// Changes a property for a ticket.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  SmartPtr<Dom::INode> convertPMtoPT(Property& from, PTLevel level) override {
    from.child(u"Title")->setValue(u"Ticket");
    return Sound::convertPMtoPT(from, level);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
